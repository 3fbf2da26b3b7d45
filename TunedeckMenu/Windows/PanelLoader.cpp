#include "TunedeckMenu/Windows/PanelLoader.h"

#include "TunedeckMenu/Panel/PanelModule.h"
#include "TunedeckMenu/Platform/Log.h"

#include <QFileInfo>
#include <QJsonObject>

#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

PanelLoader::PanelLoader(NotificationCenter& notifications, Options options)
    : m_notifications(notifications), m_options(std::move(options)) {
    m_loader.setLoadHints(QLibrary::ResolveAllSymbolsHint | QLibrary::PreventUnloadHint);
}

std::unique_ptr<PanelViews> PanelLoader::createViews(PanelHost& host, const Appearance& appearance) {
    m_loader.setFileName(m_options.module);
    const auto buildId = m_loader.metaData().value(u"MetaData"_s).toObject().value(u"buildId"_s).toString();
    if (buildId != m_options.buildId) {
        // An upgrade may have replaced the running build; windows of another build are incompatible.
        if (m_options.wasReplaced()) {
            qCInfo(appLog) << "the application was replaced while running; starting the new version";
            if (!m_options.restart()) {
                reportFailure(u"the new version can't be started"_s);
            }
        } else {
            reportFailure(QFileInfo(m_options.module).isFile() ? u"%1 is of another build"_s.arg(m_options.module)
                                                               : u"%1 is missing"_s.arg(m_options.module));
        }
        return nullptr;
    }
    auto* module = qobject_cast<PanelModule*>(m_loader.instance());
    if (module == nullptr) {
        reportFailure(m_loader.errorString());
        return nullptr;
    }
    return module->createViews(host, appearance);
}

void PanelLoader::reportFailure(const QString& reason) {
    qCWarning(appLog).noquote() << "the windows can't be opened:" << reason;
    m_notifications.post({.identifier = u"windows-unavailable"_s,
                          .thread = {},
                          .title = u"Tunedeck's window can't be opened"_s,
                          .body = u"Please install Tunedeck again: "_s + reason + u'.'});
}

} // namespace tunedeck
