// SPDX-License-Identifier: MIT
#include "hosts/admin/NumberOption.h"

#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"

qsizetype NumberOption::read(const AdminOptions &options, qsizetype usual)
{
    constexpr int most = 100'000;
    if (!options.isSet("n"))
        return usual;
    bool isNumber = false;
    const int number = options.value("n").toInt(&isNumber);
    if (!isNumber || number < 1 || number > most)
        throw AdminError(
            ExitStatus::BadUsage,
            AdminText::tr("-n needs a whole number, 1 or more, not \"%1\".").arg(options.value("n")));
    return number;
}
