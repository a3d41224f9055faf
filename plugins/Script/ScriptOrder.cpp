// SPDX-License-Identifier: MIT
#include "plugins/Script/ScriptOrder.h"

using namespace dozely;

namespace
{
/// One argument of a program on this platform is no longer, its end included. A longer script goes into a
/// file.
constexpr qsizetype longestArgument = (128 << 10) - 1; // bytes
} // namespace

Result<ScriptOrder> ScriptOrder::fromParameters(const QVariantMap &parameters)
{
    const bool hasText = parameters.contains("Script");
    if (hasText == parameters.contains("Script File"))
        return Error{hasText ? "there are both parameters \"Script\" and \"Script File\""
                             : "there is neither a parameter \"Script\" nor a parameter \"Script File\""};
    const QString key = hasText ? "Script" : "Script File";
    const QVariant value = parameters.value(key);
    const QString text = value.toString();
    QString complaint;
    if (value.typeId() != QMetaType::QString)
        complaint = "is not a string";
    else if (text.contains(QChar(0)))
        complaint = "holds a NUL character";
    else if (!hasText && !text.startsWith('/'))
        complaint = "is not an absolute path";
    else if (text.toUtf8().size() > longestArgument)
        complaint = "is too long; put the script into a file";
    if (!complaint.isEmpty())
        return Error{QString("the parameter \"%1\" %2").arg(key, complaint)};
    return ScriptOrder{hasText ? QStringList{"-e", text} : QStringList{text}};
}
