// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AECodes.h"

#include "DozelyKit/communication/events/AEMacRoman_p.h"

#include <QtEndian>

using namespace dozely;

QString NSFileTypeForHFSTypeCode(OSType code)
{
    QByteArray bytes(sizeof code, Qt::Uninitialized);
    qToBigEndian(code, bytes.data());
    return '\'' + AEMacRoman::decoded(bytes) + '\'';
}

std::optional<OSType> dozely::codeOfCharacters(const QString &characters)
{
    const QByteArray bytes = AEMacRoman::encoded(characters);
    if (bytes.size() != sizeof(OSType) ||
        AEMacRoman::decoded(bytes) != characters.normalized(QString::NormalizationForm_C))
        return {};
    return qFromBigEndian<OSType>(bytes.constData());
}
