// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/ScriptEngine_p.h"

#include <QStringDecoder>

namespace dozely
{

Result<QByteArray> ScriptEngine::sourceInFile(const QByteArray &content)
{
    constexpr char byteOrderMark[] = "\xef\xbb\xbf";
    QByteArray source = content.startsWith(byteOrderMark) ? content.mid(3) : content;
    // Compiled code is not checked by the interpreter, and can make it do anything.
    if (source.startsWith(beginOfCompiledCode))
        return Error{"Compiled code is not accepted."};
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    [[maybe_unused]] const QString text = decoder.decode(source);
    if (decoder.hasError())
        return Error{"It is not a text in UTF-8."};
    // The line end stays, so that messages count lines as the file does.
    if (source.startsWith('#'))
        source.remove(0, source.contains('\n') ? source.indexOf('\n') : source.size());
    return source;
}

} // namespace dozely
