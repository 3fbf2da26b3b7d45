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

/// What goes fades, and says meanwhile what it said.
template<typename Part>
void keepWords(const Part& old, Part& next) {
    if (!next.shown) {
        next = old;
        next.shown = false;
    }
}

} // namespace

PanelModel::PanelModel(QQmlEngine& engine) : QObject(&engine) {
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    for (QObject* list : std::initializer_list<QObject*>{&m_jobs, &m_links, &m_connect, &m_failed, &m_backups}) {
        QJSEngine::setObjectOwnership(list, QJSEngine::CppOwnership);
    }
}

PanelModel* PanelModel::create(QQmlEngine* engine, QJSEngine*) {
    return engine->findChild<PanelModel*>(QString(), Qt::FindDirectChildrenOnly);
}

void PanelModel::take(const PanelContent& next) {
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

    const auto tell = [&](auto PanelContent::* part, void (PanelModel::*changed)()) {
        if (old.*part != content.*part) {
            Q_EMIT(this->*changed)();
        }
    };
    tell(&PanelContent::header, &PanelModel::headerChanged);
    tell(&PanelContent::hiddenIcon, &PanelModel::hiddenIconChanged);
    tell(&PanelContent::notRunning, &PanelModel::notRunningChanged);
    tell(&PanelContent::recent, &PanelModel::recentChanged);
    tell(&PanelContent::tools, &PanelModel::toolsChanged);
    tell(&PanelContent::assistants, &PanelModel::assistantsChanged);
    tell(&PanelContent::downloads, &PanelModel::downloadsChanged);
    tell(&PanelContent::rekordbox, &PanelModel::rekordboxChanged);
    tell(&PanelContent::about, &PanelModel::aboutChanged);
    tell(&PanelContent::banner, &PanelModel::bannerChanged);
    tell(&PanelContent::footer, &PanelModel::footerChanged);
}

} // namespace tunedeck
