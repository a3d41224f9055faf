// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Whether `name` is that of a time zone: one of the IANA database, older names such as "US/Pacific" and
/// those without a place such as "Etc/UTC" included. Qt's own question knows neither, and its constructor
/// takes POSIX rules such as "CET-1" and paths for names.
bool isTimeZoneName(const QString &name);
