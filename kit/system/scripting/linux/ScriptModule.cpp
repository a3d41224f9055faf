// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/linux/MachineLibrary_p.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/system/scripting/ScriptEngine_p.h"

#include <QFile>
#include <QFileInfo>

namespace dozely
{

namespace
{
/// Where the module lies: beside the library that this code is in, wherever that was put.
/// DOZELY_SCRIPT_MODULE has the version in it: one of another version would know another ScriptEngine.
QString modulePath()
{
    Dl_info library{};
    if (::dladdr(reinterpret_cast<const void *>(&modulePath), &library) == 0)
        return {};
    return QFileInfo(QFile::decodeName(library.dli_fname)).canonicalPath() + '/' + DOZELY_SCRIPT_MODULE;
}
} // namespace

Result<std::unique_ptr<ScriptEngine>> ScriptEngine::make(const NSAppleScript::Limits &limits,
                                                         const ScriptFunctions &functions)
{
    const QString path = modulePath();
    MakeScriptEngine *make = nullptr;
    if (const MachineLibrary module(QFile::encodeName(path).constData());
        !module.find(make, makeScriptEngine)) {
        const char *why = ::dlerror();
        const QString sentence = QString("The script engine cannot be opened: %1").arg(why ? why : path);
        ZDRLog("%@", sentence);
        return Error{sentence};
    }
    return std::unique_ptr<ScriptEngine>(make(limits, functions));
}

} // namespace dozely
