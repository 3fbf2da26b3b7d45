#pragma once

#include "TunedeckMenu/Panel/PanelContent.h"
#include "TunedeckMenu/Views/Edge/KeyedModel.h"
#include "TunedeckMenu/Views/Edge/LinkModel.h"
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
    Q_PROPERTY(tunedeck::HeaderView header READ header NOTIFY headerChanged)
    Q_PROPERTY(tunedeck::TextCardView hiddenIcon READ hiddenIcon NOTIFY hiddenIconChanged)
    Q_PROPERTY(tunedeck::NotRunningView notRunning READ notRunning NOTIFY notRunningChanged)
    Q_PROPERTY(tunedeck::RecentView recent READ recent NOTIFY recentChanged)
    Q_PROPERTY(tunedeck::ToolsNoticeView tools READ tools NOTIFY toolsChanged)
    Q_PROPERTY(tunedeck::AssistantsView assistants READ assistants NOTIFY assistantsChanged)
    Q_PROPERTY(tunedeck::DownloadsView downloads READ downloads NOTIFY downloadsChanged)
    Q_PROPERTY(tunedeck::RekordboxView rekordbox READ rekordbox NOTIFY rekordboxChanged)
    Q_PROPERTY(tunedeck::AboutView about READ about NOTIFY aboutChanged)
    Q_PROPERTY(tunedeck::BannerView banner READ banner NOTIFY bannerChanged)
    Q_PROPERTY(tunedeck::FooterView footer READ footer NOTIFY footerChanged)
    Q_PROPERTY(QAbstractItemModel* jobs READ jobs CONSTANT)
    Q_PROPERTY(QAbstractItemModel* links READ links CONSTANT)
    Q_PROPERTY(QAbstractItemModel* connectRows READ connectRows CONSTANT)
    Q_PROPERTY(QAbstractItemModel* failedChanges READ failedChanges CONSTANT)
    Q_PROPERTY(QAbstractItemModel* backups READ backups CONSTANT)
public:
    /// Becomes a child of `engine`, where create() finds it.
    PanelAdapter(PanelActions& actions, QQmlEngine& engine);
    static PanelAdapter* create(QQmlEngine* engine, QJSEngine*);

    /// A part that is no longer shown keeps its old text, because it is still visible while it fades out.
    void setContent(const PanelContent& next);

    [[nodiscard]] PanelActions* actions() const { return &m_actions; }

    [[nodiscard]] HeaderView header() const { return m_content.header; }
    [[nodiscard]] TextCardView hiddenIcon() const { return m_content.hiddenIcon; }
    [[nodiscard]] NotRunningView notRunning() const { return m_content.notRunning; }
    [[nodiscard]] RecentView recent() const { return m_content.recent; }
    [[nodiscard]] ToolsNoticeView tools() const { return m_content.tools; }
    [[nodiscard]] AssistantsView assistants() const { return m_content.assistants; }
    [[nodiscard]] DownloadsView downloads() const { return m_content.downloads; }
    [[nodiscard]] RekordboxView rekordbox() const { return m_content.rekordbox; }
    [[nodiscard]] AboutView about() const { return m_content.about; }
    [[nodiscard]] BannerView banner() const { return m_content.banner; }
    [[nodiscard]] FooterView footer() const { return m_content.footer; }
    [[nodiscard]] QAbstractItemModel* jobs() { return &m_jobs; }
    [[nodiscard]] QAbstractItemModel* links() { return &m_links; }
    [[nodiscard]] QAbstractItemModel* connectRows() { return &m_connect; }
    [[nodiscard]] QAbstractItemModel* failedChanges() { return &m_failed; }
    [[nodiscard]] QAbstractItemModel* backups() { return &m_backups; }

Q_SIGNALS:
    void headerChanged();
    void hiddenIconChanged();
    void notRunningChanged();
    void recentChanged();
    void toolsChanged();
    void assistantsChanged();
    void downloadsChanged();
    void rekordboxChanged();
    void aboutChanged();
    void bannerChanged();
    void footerChanged();

private:
    PanelActions& m_actions;
    PanelContent m_content;
    KeyedModel<JobRowView> m_jobs{&JobRowView::id};
    LinkModel m_links;
    KeyedModel<ConnectRowView> m_connect{&ConnectRowView::id};
    KeyedModel<BannerView> m_failed{&BannerView::id};
    KeyedModel<BackupRowView> m_backups{&BackupRowView::version};
};

} // namespace tunedeck
