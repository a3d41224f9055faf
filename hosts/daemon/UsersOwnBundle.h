// SPDX-License-Identifier: MIT
#pragma once

struct Schedule;

/// Whether a schedule's bundle lies in the folder of plug-ins of the user who owns the schedule. This process
/// reads nothing of such a bundle and runs nothing of it: that user's agent does, and looks after its trust.
/// BLOCKING: for the machine's database of users, when the path looks like one.
bool isUsersOwnBundle(const Schedule &schedule);
