// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace dozely
{

/// Appends `line` in one write to the regular file at `path` (in the file system's encoding), creating it
/// when missing. Never follows a link at the end of the path and never waits. With `openToAll` the file's
/// permission bits are 0666 afterwards, whether it could be written or not. Any thread.
struct AppendResult {
    int openError = 0;  ///< The error number when the file did not open, or is no regular file.
    int writeError = 0; ///< The error number when the line was not written whole.
};
AppendResult appendLine(const char *path, std::string_view line, bool openToAll);

} // namespace dozely
