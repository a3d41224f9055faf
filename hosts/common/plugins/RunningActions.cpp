// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/RunningActions.h"

#include "hosts/common/plugins/ActionState.h"

#include <algorithm>

void RunningActions::keep(const std::shared_ptr<WDPlugIn> &plugIn, std::function<void()> finished)
{
    // Queued: the object itself is still at work when it emits the signal.
    if (plugIn->metaObject()->indexOfSignal("actionDidFinish()") >= 0)
        connect(plugIn.get(), SIGNAL(actionDidFinish()), this, SLOT(dropFinished()), Qt::QueuedConnection);
    const auto bundle = plugIn->bundle();
    m_running.push_back(
        {plugIn, std::move(finished), m_inhibitor.hold(bundle ? bundle->infoDictionary() : QVariantMap())});
    QMetaObject::invokeMethod(this, &RunningActions::dropFinished, Qt::QueuedConnection);
}

void RunningActions::dropFinished()
{
    const auto firstFinished =
        std::stable_partition(m_running.begin(), m_running.end(),
                              [](const Running &running) { return ActionState::isActing(*running.plugIn); });
    std::vector<Running> finished(std::make_move_iterator(firstFinished),
                                  std::make_move_iterator(m_running.end()));
    m_running.erase(firstFinished, m_running.end());
    for (const Running &running : finished) {
        if (running.finished)
            running.finished();
    }
}

std::vector<std::shared_ptr<WDPlugIn>> RunningActions::current() const
{
    std::vector<std::shared_ptr<WDPlugIn>> plugIns;
    for (const Running &running : m_running)
        plugIns.push_back(running.plugIn);
    return plugIns;
}

void RunningActions::clear()
{
    for (const Running &running : m_running)
        disconnect(running.plugIn.get(), nullptr, this, nullptr);
    m_running.clear();
}
