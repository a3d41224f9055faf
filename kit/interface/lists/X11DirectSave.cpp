// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/lists/X11DirectSave_p.h"

#include <QDrag>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace dozely
{

namespace
{
constexpr char directSave[] = "XdndDirectSave0";
constexpr char error[] = "E";
/// In units of four bytes: more than a path takes, each of its bytes written as %XX. A longer answer is none:
/// a target could have us fetch without end.
constexpr uint32_t longestAddress = 4096;

struct Freed {
    void operator()(void *reply) const { std::free(reply); }
};
template<class Reply>
using Owned = std::unique_ptr<Reply, Freed>;

xcb_connection_t *connection()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t atom(const QByteArray &name)
{
    const auto cookie =
        xcb_intern_atom(connection(), 0, static_cast<uint16_t>(name.size()), name.constData());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection(), cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

/// The window that stands for the source of the drag; XCB_WINDOW_NONE while none of ours does.
xcb_window_t sourceWindow()
{
    const auto cookie = xcb_get_selection_owner(connection(), atom("XdndSelection"));
    const Owned<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection(), cookie, nullptr));
    const xcb_setup_t *setup = xcb_get_setup(connection());
    const bool ours = reply && (reply->owner & ~setup->resource_id_mask) == setup->resource_id_base;
    return ours ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

/// The folder of the file that a target asks for; invalid when it asks for none that can be told.
QUrl folderOf(const QByteArray &address)
{
    const QUrl file = QUrl::fromEncoded(address);
    if (!file.isValid() || file.scheme() != "file" || !file.path().startsWith('/'))
        return {};
    return file.adjusted(QUrl::RemoveFilename | QUrl::StripTrailingSlash);
}

/// What is dragged. The property stays behind when this object goes: a target may ask late, and the next drag
/// may have begun by then.
class DirectSaveData : public QMimeData
{
public:
    explicit DirectSaveData(const X11DirectSave::Promise &promise) : m_promise(promise) {}

    /// Asked for when the drag has taken the selection and before any target hears of it: then the name must
    /// be there.
    QStringList formats() const override
    {
        if (m_window == XCB_WINDOW_NONE && (m_window = sourceWindow()) != XCB_WINDOW_NONE) {
            const QByteArray name = m_promise.fileName.toUtf8();
            xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, m_window, atom(directSave),
                                atom("text/plain"), 8, static_cast<uint32_t>(name.size()), name.constData());
        }
        return {directSave};
    }

protected:
    QVariant retrieveData(const QString &mimeType, QMetaType type) const override
    {
        if (mimeType != directSave || m_window == XCB_WINDOW_NONE)
            return QMimeData::retrieveData(mimeType, type);
        const auto cookie = xcb_get_property(connection(), 0, m_window, atom(directSave),
                                             XCB_GET_PROPERTY_TYPE_ANY, 0, longestAddress);
        const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection(), cookie, nullptr));
        if (reply && reply->format == 8 && reply->bytes_after == 0) {
            const QByteArray address(static_cast<const char *>(xcb_get_property_value(reply.get())),
                                     xcb_get_property_value_length(reply.get()));
            if (const QUrl folder = folderOf(address); folder.isValid())
                m_promise.dropped(folder);
        }
        return QByteArray(error);
    }

private:
    X11DirectSave::Promise m_promise;
    mutable xcb_window_t m_window = XCB_WINDOW_NONE;
};

/// Keeps a drag from the targets of this process.
class LocalRefusal : public QObject
{
public:
    explicit LocalRefusal(QObject *source) : m_source(source) { qGuiApp->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        const auto type = event->type();
        if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
            return false;
        auto *drop = static_cast<QDropEvent *>(event);
        if (drop->source() != m_source)
            return false;
        drop->setDropAction(Qt::IgnoreAction);
        drop->ignore();
        return true;
    }

private:
    QObject *m_source;
};
} // namespace

bool X11DirectSave::isAvailable()
{
    return connection() != nullptr;
}

bool X11DirectSave::drag(QObject *source, const Promise &promise, const QPixmap &image, const QPoint &hotSpot,
                         Qt::DropAction foreign, Qt::DropAction local)
{
    std::unique_ptr<LocalRefusal> refusal;
    if (local == Qt::IgnoreAction)
        refusal = std::make_unique<LocalRefusal>(source);
    auto *drag = new QDrag(source); // deletes itself when the target has finished
    drag->setMimeData(new DirectSaveData(promise));
    drag->setPixmap(image);
    drag->setHotSpot(hotSpot);
    return drag->exec(foreign, foreign) != Qt::IgnoreAction;
}

} // namespace dozely
