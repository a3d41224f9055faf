// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/ModuleFile_p.h"

#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>
#include <link.h>

namespace dozely
{

QString ModuleFile::ofProgram()
{
    return QFile::symLinkTarget("/proc/self/exe");
}

QString ModuleFile::ofAddress(const void *address)
{
    Dl_info info{};
    void *extra = nullptr;
    if (::dladdr1(address, &info, &extra, RTLD_DL_LINKMAP) == 0)
        return {};
    // The linker names the program itself by an empty text here, and by argv[0], which says nothing, in
    // Dl_info.
    const char *name = static_cast<const link_map *>(extra)->l_name;
    return *name == '\0' ? ofProgram() : QFileInfo(QFile::decodeName(name)).absoluteFilePath();
}

} // namespace dozely
