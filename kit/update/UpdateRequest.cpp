// SPDX-License-Identifier: MIT
#include "DozelyKit/update/UpdateRequest_p.h"

#include "DozelyKit/core/files/GuardedFile.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/update/UpdateAnswer_p.h"
#include "DozelyKit/update/UpdateServer.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace dozely
{

namespace
{
constexpr char versionStringKey[] = "versionString";
constexpr char systemVersionKey[] = "systemVersion";

QByteArray bodyOf(const UpdateRequest::Facts &facts)
{
    QJsonObject body{{"version", facts.version}, {"schedulesCount", facts.schedulesCount}};
    if (!facts.versionString.isNull())
        body.insert(versionStringKey, facts.versionString);
    if (!facts.systemVersion.isNull())
        body.insert(systemVersionKey, facts.systemVersion);
    return QJsonDocument(body).toJson(QJsonDocument::Indented);
}
} // namespace

QStringList UpdateRequest::Facts::missing() const
{
    QStringList keys;
    if (versionString.isNull())
        keys += versionStringKey;
    if (systemVersion.isNull())
        keys += systemVersionKey;
    return keys;
}

qint32 UpdateRequest::countOfEnabledSchedules()
{
    const GuardedFile file(
        {RootFolder::join("/Library/Preferences/com.dozely.plist"), PropertyList::ofTheSystem.size});
    const auto data = file.read();
    if (data && !*data)
        return 0;
    const auto store = data ? PropertyList::fromData(**data, nullptr, PropertyList::ofTheSystem)
                            : Result<QVariant>(data.error());
    if (!store) {
        ZDRLog("The schedules are not counted. %@.",
               data ? QString("\"%1\": %2").arg(file.path(), store.error().text) : store.error().text);
        return 0;
    }
    const QVariant entries = store->toMap().value("Schedule Array");
    qint32 count = 0;
    if (entries.typeId() != QMetaType::QVariantList)
        return count;
    for (const QVariant &entry : entries.toList()) {
        if (longIntegerValue(entry.toMap().value("Is Enabled")) != 0)
            ++count;
    }
    return count;
}

HttpRequest UpdateRequest::make(const Facts &facts)
{
    HttpRequest request;
    request.url = UpdateServer::address();
    request.method = "POST";
    request.body = bodyOf(facts);
    const QString length = stringWithFormat("%ld", {static_cast<qint64>(request.body.size())});
    request.headers = {{"Content-Length", length.toLatin1()},
                       // Says neither what the body is nor says it well; the server knows it so.
                       {"Content-Type", "application/x-www-form-urlencoded charset=utf-8"}};
    request.largestAnswer = UpdateAnswer::largest;
    return request;
}

} // namespace dozely
