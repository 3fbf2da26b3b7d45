#include "TunedeckMenu/Views/Edge/LinkModel.h"

#include <utility>

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

} // namespace tunedeck
