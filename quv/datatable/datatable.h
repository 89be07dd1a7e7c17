// Chief header of the data-table unit: the ASC text data file shared by every container.
#pragma once

#include "quv/base/base.h"
#include "quv/datatable/asc.h"
