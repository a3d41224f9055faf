// SPDX-License-Identifier: MIT
#include "hosts/common/bus/SchedulerClient.h"

SchedulerClient::~SchedulerClient() = default;
