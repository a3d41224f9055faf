// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSAssertionHandler.h"

#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/StringFormat.h"

const QString NSInternalInconsistencyException = QStringLiteral("NSInternalInconsistencyException");

namespace
{
std::shared_ptr<NSAssertionHandler> &ownHandler()
{
    static thread_local std::shared_ptr<NSAssertionHandler> handler;
    return handler;
}
} // namespace

NSAssertionHandler::~NSAssertionHandler() = default;

NSAssertionHandler &NSAssertionHandler::currentHandler()
{
    auto &handler = ownHandler();
    if (!handler)
        handler = std::make_shared<NSAssertionHandler>();
    return *handler;
}

void NSAssertionHandler::setCurrentHandler(std::shared_ptr<NSAssertionHandler> handler)
{
    ownHandler() = std::move(handler);
}

void NSAssertionHandler::handleFailureInMethod(const QByteArray &method, const QString &object,
                                               const QString &file, qint32 lineNumber,
                                               const QString &description)
{
    NSLog("*** Assertion failure in +[%@ %@], %@:%d: %@", object, QString::fromUtf8(method), file, lineNumber,
          description);
    throw NSException(NSInternalInconsistencyException, description);
}
