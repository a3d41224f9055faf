// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace dozely
{

/// What becomes of a line whose end is missing, as a full disk leaves it.
enum class HalfLine {
    Continue,
    Close, ///< A line end is put between it and the next.
};

struct AppendResult {
    int openError = 0;  ///< The error number when the file did not open, or is no regular file.
    int writeError = 0; ///< The error number when the line was not written whole.
};

/// Appends `line` in one write to the regular file at `path` (in the file system's encoding), creating it
/// when missing. Never follows a link at the end of the path. Where the file may not be opened it waits a
/// quarter of a second at most for one that may, and for nothing else; in vain once. With `openToAll` the
/// file's permission bits are 0666 afterwards, whether it could be written or not. Who may not read the file
/// cannot close a half line. Any thread.
AppendResult appendLine(const char *path, std::string_view line, bool openToAll, HalfLine last);

} // namespace dozely
