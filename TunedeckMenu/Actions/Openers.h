#pragma once

#include "TunedeckMenu/Model/ActionFeedback.h"
#include "TunedeckMenu/Platform/Workspace.h"

#include <QString>
#include <QUrl>

/// Open things with the desktop's programs. What the service names is checked first, because some addresses and files
/// run a program when they are opened. A refusal or failure is shown as an error.
namespace tunedeck {

/// Opens an address of the product.
void openUrl(const QUrl& url, Workspace& workspace, ActionFeedback& feedback);

/// Opens an address of Telegram: of t.me or telegram.me with https, or one with the scheme tg.
void openTelegramUrl(const QString& address, Workspace& workspace, ActionFeedback& feedback);

/// Opens an existing folder.
void openFolder(const QString& path, Workspace& workspace, ActionFeedback& feedback);

/// Opens a regular file of the application.
void openFile(const QString& path, Workspace& workspace, ActionFeedback& feedback);

/// Shows an existing file in its folder, without opening it.
void revealFile(const QString& path, Workspace& workspace, ActionFeedback& feedback);

} // namespace tunedeck
