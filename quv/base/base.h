// Chief header of the base package: array types, components and events, errors, feedback,
// CRC-32, bit fields, extended-value streams, strings, constants and the random source.
#pragma once

#include "quv/base/bitfld.h"
#include "quv/base/component.h"
#include "quv/base/constants.h"
#include "quv/base/crc32.h"
#include "quv/base/enums.h"
#include "quv/base/errors.h"
#include "quv/base/events.h"
#include "quv/base/extended_stream.h"
#include "quv/base/feedback.h"
#include "quv/base/filesys.h"
#include "quv/base/random.h"
#include "quv/base/strings.h"
#include "quv/base/types.h"
#include "quv/base/version.h"
#include "quv/base/xml.h"
