// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/NSAppleScript.h"

#include "DozelyKit/core/files/RegularFile_p.h"
#include "DozelyKit/system/scripting/ScriptEngine_p.h"
#include "DozelyKit/system/scripting/ScriptLogRoom_p.h"

#include <QFileInfo>

#include <mutex>

using namespace dozely;

const QString NSAppleScriptErrorMessage = QStringLiteral("NSAppleScriptErrorMessage");

namespace
{
struct Registry {
    std::mutex mutex;
    ScriptFunctions functions;
};

Registry &registry()
{
    static Registry instance;
    return instance;
}

void tell(QVariantMap *errorInfo, const QString &message)
{
    if (errorInfo)
        *errorInfo = {{NSAppleScriptErrorMessage, message}};
}
} // namespace

struct NSAppleScript::Private {
    QByteArray source;
    QString name = QStringLiteral("script");
    Limits limits;
    std::unique_ptr<ScriptEngine> engine; // once compiled
};

NSAppleScript::NSAppleScript(const QString &source) : d(std::make_unique<Private>())
{
    d->source = source.toUtf8();
}

NSAppleScript::NSAppleScript(std::unique_ptr<Private> state) : d(std::move(state)) {}

NSAppleScript::~NSAppleScript() = default;

std::unique_ptr<NSAppleScript> NSAppleScript::initWithContentsOfURL(const QUrl &url, QVariantMap *errorInfo)
{
    const QString path = url.toLocalFile();
    if (path.isEmpty()) {
        tell(errorInfo, QString("\"%1\" names no local file.").arg(url.toString()));
        return nullptr;
    }
    const auto content = readRegularFile(path, maximumSourceSize, true);
    if (!content) {
        tell(errorInfo, content.error().text + '.');
        return nullptr;
    }
    QString error;
    auto state = std::make_unique<Private>();
    const auto source = ScriptEngine::sourceInFile(*content);
    if (!source) {
        tell(errorInfo, QString("\"%1\": %2").arg(path, source.error().text));
        return nullptr;
    }
    state->source = *source;
    state->name = QFileInfo(path).fileName();
    return std::unique_ptr<NSAppleScript>(new NSAppleScript(std::move(state)));
}

void NSAppleScript::setLimits(const Limits &limits)
{
    d->limits = limits;
    if (d->engine)
        d->engine->setLimits(limits);
}

bool NSAppleScript::compileAndReturnError(QVariantMap *errorInfo)
{
    ScriptFunctions functions;
    {
        const std::lock_guard lock(registry().mutex);
        functions = registry().functions;
    }
    auto engine = ScriptEngine::make(d->limits, functions);
    if (!engine) {
        tell(errorInfo, engine.error().text);
        return false;
    }
    if (const auto compiled = (*engine)->compile(d->source, d->name); !compiled) {
        tell(errorInfo, compiled.error().text);
        return false;
    }
    d->engine = *std::move(engine);
    return true;
}

bool NSAppleScript::isCompiled() const
{
    return d->engine != nullptr;
}

std::optional<NSAppleScript::Result> NSAppleScript::executeAndReturnError(QVariantMap *errorInfo)
{
    if (!isCompiled() && !compileAndReturnError(errorInfo))
        return {};
    const ScriptLogRoom logRoom;
    const auto text = d->engine->execute();
    if (!text) {
        tell(errorInfo, text.error().text);
        return {};
    }
    return Result(*text);
}

void NSAppleScript::registerFunction(const QString &name, const Function &function)
{
    const std::lock_guard lock(registry().mutex);
    registry().functions.insert(name, function);
}
