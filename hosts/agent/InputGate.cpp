// SPDX-License-Identifier: MIT
#include "hosts/agent/InputGate.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/interface/windows/ZDRWindow.h"
#include "hosts/agent/WindowExposure.h"

using namespace dozely;

InputGate::InputGate(const ZDRWindow &window, const WindowExposure &exposure) : m_window(window)
{
    connect(&exposure, &WindowExposure::changed, this, &InputGate::follow);
}

InputGate::~InputGate() = default;

void InputGate::follow(bool isExposed)
{
    if (m_isOpen)
        return;
    m_waiting.reset();
    if (isExposed)
        wait(ZDRWindow::fadeTime + pause); // the fade began before anything could be seen of it
}

void InputGate::wait(std::chrono::milliseconds delay)
{
    m_waiting = std::make_unique<QObject>();
    Port<Clock>::current()->callAfter(delay, m_waiting.get(), [this] {
        if (m_window.alphaValue() < 1)
            return wait(pause); // the process was held up
        m_waiting.reset();
        m_isOpen = true;
        Q_EMIT opened();
    });
}
