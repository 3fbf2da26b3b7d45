#pragma once

#include "TunedeckMenu/Panel/PanelContent.h"
#include "TunedeckMenu/Views/Edge/KeyedModel.h"

namespace tunedeck {

/// The links. Each has a list model of its fields, which lives as long as the link.
class LinkModel : public KeyedModel<LinkRowView> {
    Q_OBJECT
public:
    explicit LinkModel(QObject* parent = nullptr) : KeyedModel(&LinkRowView::id, parent) {}
    void assignLinks(const QList<LinkRowView>& links);
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    QHash<QString, KeyedModel<SecretFieldView>*> m_fields;
};

} // namespace tunedeck
