#include "TunedeckMenu/Views/Edge/PanelAdapter.h"

#include <QTimer>

namespace tunedeck {

namespace {

/// When this many rows have disappeared, their memory is worth a collection; the engine alone would keep it.
constexpr int manyRows = 20;

/// Keeps the old text of a part that is hidden now: it is still visible while it fades out.
template<typename Part>
void keepText(const Part& old, Part& next) {
    if (!next.shown) {
        next = old;
        next.shown = false;
    }
}

} // namespace

PanelAdapter::PanelAdapter(PanelHost& host, QQmlEngine& engine) : QObject(&engine), m_actions(host.actions()) {
    m_links.onRequest = [&host](RowRange range) { host.showRows(&RowRanges::links, range); };
    m_failed.onRequest = [&host](RowRange range) { host.showRows(&RowRanges::failedChanges, range); };
    m_backups.onRequest = [&host](RowRange range) { host.showRows(&RowRanges::backups, range); };
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
}

PanelAdapter* PanelAdapter::create(QQmlEngine* engine, QJSEngine*) {
    return engine->findChild<PanelAdapter*>(QString(), Qt::FindDirectChildrenOnly);
}

void PanelAdapter::setContent(const PanelContent& next) {
    const int oldRows = rowCount();
    PanelContent content = next;
    keepText(m_content.hiddenIcon, content.hiddenIcon);
    keepText(m_content.notRunning, content.notRunning);
    keepText(m_content.recent, content.recent);
    keepText(m_content.tools, content.tools);
    keepText(m_content.banner, content.banner);
    keepText(m_content.downloads.warning, content.downloads.warning);
    if (!content.rekordbox.failedShown) {
        content.rekordbox.failed = m_content.rekordbox.failed;
        content.rekordbox.retryButton = m_content.rekordbox.retryButton;
        content.rekordbox.dismissButton = m_content.rekordbox.dismissButton;
    }
    m_jobs.assign(content.recent.jobs);
    m_links.assignSlice(content.assistants.links);
    m_connect.assign(content.assistants.connect);
    m_failed.assignSlice(content.rekordbox.failed);
    m_backups.assignSlice(content.rekordbox.backups);
    if (m_content != content) {
        m_content = content;
        Q_EMIT contentChanged();
    }
    if (rowCount() < oldRows - manyRows) {
        // Later: the items of the removed rows still exist.
        QTimer::singleShot(1000, this, [this] { qmlEngine(this)->collectGarbage(); });
    }
}

} // namespace tunedeck
