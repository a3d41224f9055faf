// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/linux/UinputKeyDriver_p.h"

#include "DozelyKit/core/foundation/ProblemReport.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/power/linux/EvdevLibrary_p.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace dozely
{

namespace
{
constexpr int keyDown = 0x0A;
constexpr int press = 1;
constexpr int release = 0;
constexpr int boundToNothing = KEY_UNKNOWN;

// By the code of the aux control button.
constexpr std::array<int, 24> auxKeys{
    KEY_VOLUMEUP,   KEY_VOLUMEDOWN, KEY_BRIGHTNESSUP, KEY_BRIGHTNESSDOWN,
    KEY_CAPSLOCK,   KEY_HELP,       KEY_POWER,        KEY_MUTE,
    KEY_UP,         KEY_DOWN,       KEY_NUMLOCK,      boundToNothing, // 11, 12: the contrast
    boundToNothing, KEY_DASHBOARD,  KEY_EJECTCD,      KEY_SWITCHVIDEOMODE,
    KEY_PLAYPAUSE,  KEY_NEXTSONG,   KEY_PREVIOUSSONG, KEY_FASTFORWARD,
    KEY_REWIND,     KEY_KBDILLUMUP, KEY_KBDILLUMDOWN, KEY_KBDILLUMTOGGLE,
};

// Subtypes of system-defined events that are keys without data.
constexpr qint16 powerSubtype = 1;
constexpr qint16 ejectSubtype = 10;
constexpr qint16 sleepSubtype = 11;

struct FreeDescription {
    void operator()(libevdev *description) const { EvdevLibrary::open()->free(description); }
};

bool isNotThere(int failure)
{
    return failure == ELIBACC || failure == ENOENT || failure == EACCES || failure == EPERM ||
           failure == ENODEV || failure == ENXIO || failure == ENOTDIR;
}
} // namespace

struct UinputKeyDriver::Device {
    int file = -1;
    libevdev_uinput *keyboard = nullptr;

    ~Device()
    {
        if (keyboard)
            EvdevLibrary::open()->uinput_destroy(keyboard);
        ::close(file);
    }

    int write(int type, int code, int value) const
    {
        return -EvdevLibrary::open()->uinput_write_event(keyboard, static_cast<unsigned>(type),
                                                         static_cast<unsigned>(code), value);
    }

    int send(int key, int value) const
    {
        const int failure = write(EV_KEY, key, value);
        return failure != 0 ? failure : write(EV_SYN, SYN_REPORT, 0);
    }
};

UinputKeyDriver::UinputKeyDriver() = default;

UinputKeyDriver::~UinputKeyDriver() = default;

int UinputKeyDriver::keyFor(const NXEventData &event)
{
    switch (event.compound.subType) {
    case NX_SUBTYPE_AUX_CONTROL_BUTTONS: {
        const size_t code = event.compound.words[0] >> 16 & 0xFF;
        return code < auxKeys.size() ? auxKeys[code] : boundToNothing;
    }
    case powerSubtype:
        return KEY_POWER;
    case ejectSubtype:
        return KEY_EJECTCD;
    case sleepSubtype:
        return KEY_SLEEP;
    default:
        return boundToNothing;
    }
}

/// Makes the keyboard on `file`, which it takes over.
int UinputKeyDriver::makeDevice(int file)
{
    auto device = std::make_unique<Device>();
    device->file = file;
    const EvdevLibrary *const evdev = EvdevLibrary::open();
    if (!evdev)
        return ELIBACC;
    const std::unique_ptr<libevdev, FreeDescription> description(evdev->make());
    if (!description)
        return ENOMEM;
    evdev->set_name(description.get(), "Dozely keys");
    evdev->set_id_bustype(description.get(), BUS_VIRTUAL);
    for (const int key : auxKeys)
        evdev->enable_event_code(description.get(), EV_KEY, static_cast<unsigned>(key), nullptr);
    for (const int key : {KEY_SLEEP, boundToNothing})
        evdev->enable_event_code(description.get(), EV_KEY, static_cast<unsigned>(key), nullptr);
    const int result = evdev->uinput_create_from_device(description.get(), file, &device->keyboard);
    if (result == 0)
        m_device = std::move(device);
    return -result;
}

KeyEventDriver::Opening UinputKeyDriver::open()
{
    if (m_isOpen)
        return Opening::Opened;
    const int file = ::open(QFile::encodeName(RootFolder::join("/dev/uinput")).constData(),
                            O_RDWR | O_NONBLOCK | O_CLOEXEC);
    const int failure = file < 0 ? errno : makeDevice(file);
    if (failure != 0 && !isNotThere(failure))
        return Opening::Refused;
    if (failure != 0)
        reportProblem(QString("Key events cannot be posted here: %1.").arg(qt_error_string(failure)));
    m_isOpen = true;
    return Opening::Opened;
}

bool UinputKeyDriver::post(const NXEventData &event)
{
    if (!m_device)
        return m_isOpen;
    const bool isAux = event.compound.subType == NX_SUBTYPE_AUX_CONTROL_BUTTONS;
    if (isAux && (event.compound.words[0] >> 8 & 0xFF) != keyDown)
        return true; // the release, which has happened
    const int key = keyFor(event);
    // A key that stays down repeats, and cannot be pressed again.
    return m_device->send(key, press) == 0 && m_device->send(key, release) == 0;
}

template<>
std::shared_ptr<KeyEventDriver> &Port<KeyEventDriver>::current()
{
    static auto *const port = new std::shared_ptr<KeyEventDriver>(std::make_shared<UinputKeyDriver>());
    return *port;
}

} // namespace dozely
