// SPDX-License-Identifier: MIT
#include "hosts/performer/ActingRole.h"

void ActingRole::beginProcess(std::unique_ptr<QCoreApplication> &, int &, char **) {}
