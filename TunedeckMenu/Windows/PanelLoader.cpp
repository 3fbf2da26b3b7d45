#include "TunedeckMenu/Windows/PanelLoader.h"

#include "TunedeckMenu/Panel/PanelModule.h"
#include "TunedeckMenu/Platform/Log.h"

#include <QFileInfo>
#include <QJsonObject>

#include <utility>

namespace tunedeck {

PanelLoader::PanelLoader(NotificationCenter& notifications, Options options)
    : m_notifications(notifications), m_options(std::move(options)) {
    m_loader.setLoadHints(QLibrary::ResolveAllSymbolsHint | QLibrary::PreventUnloadHint);
}

std::unique_ptr<PanelViews> PanelLoader::createViews(PanelHost& host, const Appearance& appearance) {
    m_loader.setFileName(m_options.module);
    const auto buildId =
        m_loader.metaData().value(QStringLiteral("MetaData")).toObject().value(QStringLiteral("buildId")).toString();
    if (buildId != m_options.buildId) {
        // An upgrade may have put another build in the place of the one that runs: its windows would not fit.
        if (m_options.wasReplaced()) {
            qCInfo(appLog) << "the application was replaced while it ran: starting the new one";
            m_options.restart();
        } else {
            reportFailure(QFileInfo(m_options.module).isFile()
                              ? QStringLiteral("%1 is of another build").arg(m_options.module)
                              : QStringLiteral("%1 is missing").arg(m_options.module));
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
    m_notifications.post({.identifier = QStringLiteral("windows-unavailable"),
                          .thread = {},
                          .title = QStringLiteral("Tunedeck's window can't be opened"),
                          .body = QStringLiteral("Please install Tunedeck again: ") + reason + u'.'});
}

} // namespace tunedeck
