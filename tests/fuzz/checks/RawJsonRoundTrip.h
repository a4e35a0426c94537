#pragma once
// Raw values (key groups, filter colours, plug-in fields) are written back as they
// were read.

#include <QString>

#include "RawJson.h"

namespace autoscene::fuzz {

// Writes `raw` as a member of a task-file object, reads the text back with the task
// file's own parser and compares; returns what differed, or "".
QString rawJsonRoundTripFailure(const model::RawJson& raw);

}  // namespace autoscene::fuzz
