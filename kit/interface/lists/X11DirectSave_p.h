// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <QString>

#include <functional>

class QObject;
class QUrl;

namespace dozely
{

/// Drags that promise a file: the Direct Save protocol (XDS) on top of X11's drag and drop.
///
/// The source writes a file name into the property XdndDirectSave0 of its window and offers a type of that
/// name. At the drop the target writes the address at which it wants the file into the property and asks for
/// the type; the answer is one letter. As nothing is ever written here, it is "E": there is no file, and
/// asking in another way is no use.
namespace X11DirectSave
{
struct Promise {
    QString fileName;                          ///< What the target may call the file.
    std::function<void(const QUrl &)> dropped; ///< Called at a drop with the folder that the target chose.
};

/// Whether this process shows its windows on an X server.
bool isAvailable();

/// Drags until the button is released, running the event loop; true when a target took the drop. `hotSpot` is
/// the pointer's place in the image. `local` is what a target in this process may do, `foreign` what others
/// may.
bool drag(QObject *source, const Promise &promise, const QPixmap &image, const QPoint &hotSpot,
          Qt::DropAction foreign, Qt::DropAction local);
} // namespace X11DirectSave

} // namespace dozely
