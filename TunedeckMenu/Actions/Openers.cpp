#include "TunedeckMenu/Actions/Openers.h"

#include "TunedeckMenu/Panel/ShownText.h"

#include <QFileInfo>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

bool isTelegramUrl(const QUrl& url) {
    const bool isWeb = url.scheme() == u"https" && url.userInfo().isEmpty() && url.port() == -1 &&
                       (url.host() == u"t.me" || url.host() == u"telegram.me");
    return url.isValid() && (isWeb || url.scheme() == u"tg");
}

} // namespace

void openUrl(const QUrl& url, Workspace& workspace, ActionFeedback& feedback) {
    if (!workspace.open(url)) {
        const QString name = url.isLocalFile() ? url.toLocalFile() : url.toDisplayString();
        feedback.showError(u"Couldn't open %1."_s.arg(oneLine(name)));
    }
}

void openTelegramUrl(const QString& address, Workspace& workspace, ActionFeedback& feedback) {
    const QUrl url(address, QUrl::StrictMode);
    if (isTelegramUrl(url)) {
        openUrl(url, workspace, feedback);
    } else {
        feedback.showError(u"Couldn't open Telegram: “%1” isn't one of its addresses."_s.arg(oneLine(address)));
    }
}

void openFolder(const QString& path, Workspace& workspace, ActionFeedback& feedback) {
    if (const QFileInfo folder(path); folder.isAbsolute() && folder.isDir()) {
        openUrl(QUrl::fromLocalFile(path), workspace, feedback);
    } else {
        feedback.showError(u"Couldn't open “%1”: there is no such folder."_s.arg(oneLine(path)));
    }
}

void openFile(const QString& path, Workspace& workspace, ActionFeedback& feedback) {
    if (QFileInfo(path).isFile()) {
        openUrl(QUrl::fromLocalFile(path), workspace, feedback);
    } else {
        feedback.showError(u"Couldn't open “%1”: there is no such file."_s.arg(oneLine(path)));
    }
}

void revealFile(const QString& path, Workspace& workspace, ActionFeedback& feedback) {
    if (const QFileInfo file(path); file.isAbsolute() && file.exists()) {
        workspace.reveal(path);
    } else {
        feedback.showError(u"Couldn't show “%1”: there is no such file."_s.arg(oneLine(path)));
    }
}

} // namespace tunedeck
