// Umbrella header: includes the chief header of every unit.
#pragma once

#include "quv/base/base.h"
