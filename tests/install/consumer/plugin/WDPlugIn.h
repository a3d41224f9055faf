// SPDX-License-Identifier: MIT
#pragma once

/// A header of the consumer's own in a folder that has the name of one of the library's.
inline const char *ownPlugInHeader()
{
    return "own header: yes";
}
