#include "TunedeckMenu/Views/Edge/PanelAdapter.h"

namespace tunedeck {

namespace {

/// Keeps the old text of a part that is hidden now: it is still visible while it fades out.
template<typename Part>
void keepText(const Part& old, Part& next) {
    if (!next.shown) {
        next = old;
        next.shown = false;
    }
}

} // namespace

PanelAdapter::PanelAdapter(PanelActions& actions, QQmlEngine& engine) : QObject(&engine), m_actions(actions) {
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
}

PanelAdapter* PanelAdapter::create(QQmlEngine* engine, QJSEngine*) {
    return engine->findChild<PanelAdapter*>(QString(), Qt::FindDirectChildrenOnly);
}

void PanelAdapter::setContent(const PanelContent& next) {
    PanelContent content = next;
    keepText(m_content.hiddenIcon, content.hiddenIcon);
    keepText(m_content.notRunning, content.notRunning);
    keepText(m_content.recent, content.recent);
    keepText(m_content.tools, content.tools);
    keepText(m_content.banner, content.banner);
    keepText(m_content.downloads.warning, content.downloads.warning);
    m_jobs.assign(content.recent.jobs);
    m_links.assign(content.assistants.links);
    m_connect.assign(content.assistants.connect);
    m_failed.assign(content.rekordbox.failed);
    m_backups.assign(content.rekordbox.backups);
    if (m_content != content) {
        m_content = content;
        Q_EMIT contentChanged();
    }
}

} // namespace tunedeck
