// Chief header of the data-table unit: TDataTable, and the ASC text data file shared by every
// container.
#pragma once

#include "quv/base/base.h"
#include "quv/datatable/asc.h"
#include "quv/datatable/datatable_core.h"
#include "quv/datatable/datatable_types.h"
