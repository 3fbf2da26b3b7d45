#include "TunedeckMenu/Views/Edge/PanelAdapter.h"

namespace tunedeck {

void LinkModel::assignLinks(const QList<LinkRowView>& links) {
    QHash<QString, KeyedModel<SecretFieldView>*> kept;
    for (const LinkRowView& link : links) {
        auto*& fields = kept[link.id];
        if (fields == nullptr) {
            fields = m_fields.take(link.id);
        }
        if (fields == nullptr) {
            fields = new KeyedModel<SecretFieldView>(&SecretFieldView::key, this);
        }
        fields->assign(link.fields);
    }
    const auto gone = std::exchange(m_fields, kept);
    assign(links);
    for (auto* fields : gone) {
        fields->deleteLater();
    }
}

QVariant LinkModel::data(const QModelIndex& index, int role) const {
    static const int fieldsRole = Qt::UserRole + LinkRowView::staticMetaObject.indexOfProperty("fields");
    if (role == fieldsRole && index.isValid()) {
        return QVariant::fromValue<QAbstractItemModel*>(m_fields.value(rows()[index.row()].id));
    }
    return KeyedModel::data(index, role);
}

namespace {

/// Keeps the old text of an item while it fades out.
template<typename Part>
void keepWords(const Part& old, Part& next) {
    if (!next.shown) {
        next = old;
        next.shown = false;
    }
}

} // namespace

PanelAdapter::PanelAdapter(PanelActions& actions, QQmlEngine& engine) : QObject(&engine), m_actions(actions) {
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    for (QObject* list : std::initializer_list<QObject*>{&m_jobs, &m_links, &m_connect, &m_failed, &m_backups}) {
        QJSEngine::setObjectOwnership(list, QJSEngine::CppOwnership);
    }
}

PanelAdapter* PanelAdapter::create(QQmlEngine* engine, QJSEngine*) {
    return engine->findChild<PanelAdapter*>(QString(), Qt::FindDirectChildrenOnly);
}

void PanelAdapter::setContent(const PanelContent& next) {
    PanelContent content = next;
    keepWords(m_content.hiddenIcon, content.hiddenIcon);
    keepWords(m_content.notRunning, content.notRunning);
    keepWords(m_content.recent, content.recent);
    keepWords(m_content.tools, content.tools);
    keepWords(m_content.banner, content.banner);
    keepWords(m_content.downloads.warning, content.downloads.warning);
    const PanelContent old = std::exchange(m_content, content);
    m_jobs.assign(content.recent.jobs);
    m_links.assignLinks(content.assistants.links);
    m_connect.assign(content.assistants.connect);
    m_failed.assign(content.rekordbox.failed);
    m_backups.assign(content.rekordbox.backups);

    const auto tell = [&](auto PanelContent::* part, void (PanelAdapter::*changed)()) {
        if (old.*part != content.*part) {
            Q_EMIT(this->*changed)();
        }
    };
    tell(&PanelContent::header, &PanelAdapter::headerChanged);
    tell(&PanelContent::hiddenIcon, &PanelAdapter::hiddenIconChanged);
    tell(&PanelContent::notRunning, &PanelAdapter::notRunningChanged);
    tell(&PanelContent::recent, &PanelAdapter::recentChanged);
    tell(&PanelContent::tools, &PanelAdapter::toolsChanged);
    tell(&PanelContent::assistants, &PanelAdapter::assistantsChanged);
    tell(&PanelContent::downloads, &PanelAdapter::downloadsChanged);
    tell(&PanelContent::rekordbox, &PanelAdapter::rekordboxChanged);
    tell(&PanelContent::about, &PanelAdapter::aboutChanged);
    tell(&PanelContent::banner, &PanelAdapter::bannerChanged);
    tell(&PanelContent::footer, &PanelAdapter::footerChanged);
}

} // namespace tunedeck
