// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/NSNetService.h"

/// What is known of a network service; see NSNetService.
namespace zandorSoftwaresExtensions
{
/// The dotted-decimal text of the service's IPv4 address: the last one when it has several; null when it has
/// none.
DOZELYKIT_EXPORT QString ipAddress(const NSNetService &service);

/// The port of that same address; 0 when there is none.
DOZELYKIT_EXPORT quint16 portNumber(const NSNetService &service);

/// Makes the dictionary the service's TXT record: keys in printable ASCII, values byte arrays or texts,
/// invalid for a key without a value. A dictionary that no record can hold
/// (NSNetService::dataFromTXTRecordDictionary), or a service without TXT records, stays as it is.
DOZELYKIT_EXPORT void setProtocolSpecificInformationDictionary(NSNetService &service,
                                                               const QVariantMap &dictionary);

/// The service's TXT record: byte arrays by key, invalid for a key without a value; empty without a record.
/// Absent when TXT records are not supported. Anybody on the network may have written it.
DOZELYKIT_EXPORT std::optional<QVariantMap>
protocolSpecificInformationDictionary(const NSNetService &service);
} // namespace zandorSoftwaresExtensions
