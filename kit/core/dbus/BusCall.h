// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QVariant>

#include <memory>

namespace dozely
{

/// A method call that came from somebody on the bus. It is answered once, whenever that is: copies are the
/// same call, and one of which the last copy goes unanswered is refused, so that nobody waits for ever. May
/// outlive its connection; nothing is sent then.
///
/// THREADING: that of the connection. BLOCKING: never.
class DOZELYKIT_EXPORT BusCall
{
public:
    /// @name What is called, and by whom
    /// The sender is its unique name on the bus (":1.5"), as the bus tells it; the interface may be empty.
    /// @{
    const QByteArray &sender() const;
    const QByteArray &path() const;
    const QByteArray &interface() const;
    const QByteArray &method() const;
    const QByteArray &signature() const;
    /// @}

    /// What it is called with, as BusConnection has values. An error for a message that is damaged or is
    /// worth more than `most` bytes, which somebody sent to fill our memory.
    Result<QVariantList> arguments(qsizetype most) const;

    /// Answers with `values`, of which `signature` has the types; with an error where one does not fit.
    void answer(const QByteArray &signature = {}, const QVariantList &values = {}) const;

    /// Answers with an error: its name on the bus, or the general one where that is empty, and its text.
    void refuse(const Error &error) const;

    struct Private;
    explicit BusCall(std::shared_ptr<Private> state);

private:
    std::shared_ptr<Private> d;
};

} // namespace dozely
