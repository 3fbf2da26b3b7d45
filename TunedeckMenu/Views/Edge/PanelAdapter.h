#pragma once

#include "TunedeckMenu/Panel/PanelContent.h"
#include "TunedeckMenu/Panel/PanelHost.h"
#include "TunedeckMenu/Views/Edge/KeyedModel.h"
#include "TunedeckMenu/Views/Edge/Types.h"

#include <QObject>
#include <QQmlEngine>

namespace tunedeck {

/// The panel's content and actions for QML. Equal values notify nobody, and lists keep their rows.
class PanelAdapter : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Panel)
    QML_SINGLETON
    Q_PROPERTY(tunedeck::PanelActions* actions READ actions CONSTANT)
    Q_PROPERTY(tunedeck::PanelContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(QAbstractItemModel* jobs READ jobs CONSTANT)
    Q_PROPERTY(tunedeck::RowModel* links READ links CONSTANT)
    Q_PROPERTY(QAbstractItemModel* connectRows READ connectRows CONSTANT)
    Q_PROPERTY(tunedeck::RowModel* failedChanges READ failedChanges CONSTANT)
    Q_PROPERTY(tunedeck::RowModel* backups READ backups CONSTANT)
public:
    /// Becomes a child of `engine`, where create() finds it.
    PanelAdapter(PanelHost& host, QQmlEngine& engine);
    static PanelAdapter* create(QQmlEngine* engine, QJSEngine*);

    /// A part that is no longer shown keeps its old text, because it is still visible while it fades out.
    void setContent(const PanelContent& next);

    [[nodiscard]] PanelActions* actions() const { return &m_actions; }
    [[nodiscard]] PanelContent content() const { return m_content; }
    [[nodiscard]] QAbstractItemModel* jobs() { return &m_jobs; }
    [[nodiscard]] RowModel* links() { return &m_links; }
    [[nodiscard]] QAbstractItemModel* connectRows() { return &m_connect; }
    [[nodiscard]] RowModel* failedChanges() { return &m_failed; }
    [[nodiscard]] RowModel* backups() { return &m_backups; }

Q_SIGNALS:
    void contentChanged();

private:
    [[nodiscard]] int rowCount() const { return m_links.rowCount() + m_failed.rowCount() + m_backups.rowCount(); }

    PanelActions& m_actions;
    PanelContent m_content;
    KeyedModel<JobRowView> m_jobs{&JobRowView::id};
    KeyedModel<LinkRowView> m_links{&LinkRowView::id};
    KeyedModel<ConnectRowView> m_connect{&ConnectRowView::id};
    KeyedModel<BannerView> m_failed{&BannerView::id};
    KeyedModel<BackupRowView> m_backups{&BackupRowView::id};
};

} // namespace tunedeck
