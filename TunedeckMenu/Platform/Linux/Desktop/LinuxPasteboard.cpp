#include "TunedeckMenu/Platform/Linux/Desktop/LinuxPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <memory>

namespace tunedeck {

using namespace Qt::StringLiterals;

void LinuxPasteboard::setText(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

void LinuxPasteboard::setSecret(const QString& text) {
    auto data = std::make_unique<QMimeData>();
    data->setText(text);
    data->setData(u"x-kde-passwordManagerHint"_s, "secret"); // the mark that clipboard managers agree on
    QGuiApplication::clipboard()->setMimeData(data.release());
}

} // namespace tunedeck
