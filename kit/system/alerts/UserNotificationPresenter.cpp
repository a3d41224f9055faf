// SPDX-License-Identifier: MIT
#include "DozelyKit/system/alerts/UserNotificationPresenter.h"

namespace dozely
{

std::shared_ptr<UserNotificationPresenter> &alertWindow()
{
    static auto *const window = new std::shared_ptr<UserNotificationPresenter>();
    return *window;
}

} // namespace dozely
