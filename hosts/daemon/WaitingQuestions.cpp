// SPDX-License-Identifier: MIT
#include "hosts/daemon/WaitingQuestions.h"

#include <algorithm>

void WaitingQuestions::add(Question question)
{
    (question.isDue ? m_due : m_later).push_back(std::move(question));
}

void WaitingQuestions::makeDue(const QString &bundlePath, const ParametersDigest &digest)
{
    const auto found = std::find_if(m_later.begin(), m_later.end(), [&](const Question &question) {
        return question.digest == digest && question.about.bundlePath == bundlePath;
    });
    if (found == m_later.end())
        return;
    found->isDue = true;
    m_due.push_back(std::move(*found));
    m_later.erase(found);
}

std::optional<WaitingQuestions::Question> WaitingQuestions::take()
{
    auto &queue = m_due.empty() ? m_later : m_due;
    if (queue.empty())
        return {};
    Question next = std::move(queue.front());
    queue.pop_front();
    return next;
}

void WaitingQuestions::drop(const std::function<bool(const Question &)> &isUnwanted)
{
    for (auto *queue : {&m_due, &m_later})
        std::erase_if(*queue, isUnwanted);
}
