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
    const PanelContent old = std::exchange(m_content, content);
    m_jobs.assign(content.recent.jobs);
    m_links.assignLinks(content.assistants.links);
    m_connect.assign(content.assistants.connect);
    m_failed.assign(content.rekordbox.failed);
    m_backups.assign(content.rekordbox.backups);

    const auto notify = [&](auto PanelContent::* part, void (PanelAdapter::*changed)()) {
        if (old.*part != content.*part) {
            Q_EMIT(this->*changed)();
        }
    };
    notify(&PanelContent::header, &PanelAdapter::headerChanged);
    notify(&PanelContent::hiddenIcon, &PanelAdapter::hiddenIconChanged);
    notify(&PanelContent::notRunning, &PanelAdapter::notRunningChanged);
    notify(&PanelContent::recent, &PanelAdapter::recentChanged);
    notify(&PanelContent::tools, &PanelAdapter::toolsChanged);
    notify(&PanelContent::assistants, &PanelAdapter::assistantsChanged);
    notify(&PanelContent::downloads, &PanelAdapter::downloadsChanged);
    notify(&PanelContent::rekordbox, &PanelAdapter::rekordboxChanged);
    notify(&PanelContent::about, &PanelAdapter::aboutChanged);
    notify(&PanelContent::banner, &PanelAdapter::bannerChanged);
    notify(&PanelContent::footer, &PanelAdapter::footerChanged);
}

} // namespace tunedeck
