// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <chrono>
#include <memory>

class WindowExposure;
class ZDRWindow;

/// Says from when on a window may believe that what is pressed is meant for it: half a second after it can be
/// seen and has faded in. A click that was on its way to what stood there before comes earlier.
///
/// THREADING: the main thread.
class InputGate : public QObject
{
    Q_OBJECT
public:
    /// Counted from the moment when the window is shown in full.
    static constexpr std::chrono::milliseconds pause{500};

    /// Both must outlive the object.
    InputGate(const ZDRWindow &window, const WindowExposure &exposure);
    ~InputGate() override;

    bool isOpen() const { return m_isOpen; }

Q_SIGNALS:
    /// Once; it stays open then.
    void opened();

private:
    void follow(bool isExposed);
    void wait(std::chrono::milliseconds delay);

    const ZDRWindow &m_window;
    std::unique_ptr<QObject> m_waiting;
    bool m_isOpen = false;
};
