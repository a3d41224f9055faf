// SPDX-License-Identifier: MIT
#pragma once

#include "support/BecomeUser.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>

namespace Identity
{
/// Runs the expectations of `body` in a child process that `become` has given another identity.
template<class Become, class Body>
testing::AssertionResult holdsAs(Become become, Body body)
{
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child < 0)
        return testing::AssertionFailure() << "fork failed";
    if (child == 0) {
        if (become())
            body();
        else
            ADD_FAILURE() << "the identity could not be changed";
        std::fflush(nullptr);
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    if (::waitpid(child, &status, 0) != child)
        return testing::AssertionFailure() << "the child is lost";
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "in the child process, wait status " << status;
}

template<class Body>
testing::AssertionResult holdsAsRoot(Body body)
{
    return holdsAs(becomeRoot, body);
}

template<class Body>
testing::AssertionResult holdsAsOrdinaryUser(Body body)
{
    return holdsAs(becomeOrdinaryUser, body);
}
} // namespace Identity
