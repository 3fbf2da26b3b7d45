#include "TunedeckCore/UserDefaults.h"

#include "TunedeckCore/Support/Files/Document.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QSettings>
#include <QStandardPaths>

namespace tunedeck {

using namespace Qt::StringLiterals;

// QSettings blocks on a FIFO, reads files of any size and replaces devices, so it may only open a readable document.

QString UserDefaults::standardPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' +
           QCoreApplication::organizationName() + u'/' + QCoreApplication::applicationName() + u".conf"_s;
}

QString UserDefaults::value(const QString& key) const {
    return isReadableDocument(m_path) ? QSettings(m_path, QSettings::IniFormat).value(key).toString() : QString();
}

void UserDefaults::setValue(const QString& key, const QString& value) const {
    if (!isReadableDocument(m_path)) {
        return;
    }
    QSettings settings(m_path, QSettings::IniFormat);
    settings.setValue(key, value);
    settings.sync();
    if (settings.status() != QSettings::NoError) {
        qWarning("%s can't be written", qUtf8Printable(m_path));
    }
}

} // namespace tunedeck
