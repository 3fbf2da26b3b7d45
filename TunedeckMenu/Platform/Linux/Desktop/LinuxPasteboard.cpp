#include "TunedeckMenu/Platform/Linux/Desktop/LinuxPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace tunedeck {

void LinuxPasteboard::setText(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

} // namespace tunedeck
