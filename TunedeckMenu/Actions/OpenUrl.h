#pragma once

#include "TunedeckMenu/Model/ActionFeedback.h"
#include "TunedeckMenu/Platform/Workspace.h"

#include <QUrl>

namespace tunedeck {

using namespace Qt::StringLiterals;

/// Opens a URL, file or folder with the desktop's default application; a failure is shown as an error.
inline void openUrl(const QUrl& url, Workspace& workspace, ActionFeedback& feedback) {
    if (!workspace.open(url)) {
        const auto name = url.isLocalFile() ? url.toLocalFile() : url.toDisplayString();
        feedback.showError(u"Couldn't open %1."_s.arg(name));
    }
}

} // namespace tunedeck
