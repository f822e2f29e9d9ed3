// Who is told of a document that could not be written.
#pragma once

#include "base/file_io.h"

#include <functional>

// The documents that settings are kept in: "set.json", "setting.inf", "session.json"
// and "usage.json".
enum class StoredFile { Settings, KnownHeadsets, ServerSettings, UsageChoice };

// Called on the thread that wanted to write, with what came of it; also when
// nothing was tried because the file could not be read (OpenFailed).
using NotWritten = std::function<void(StoredFile, WriteResult)>;
