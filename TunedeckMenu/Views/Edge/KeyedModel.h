#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QList>
#include <QMetaProperty>
#include <QSet>

#include <utility>

namespace tunedeck {

/// A list model that keeps the rows of equal identity across updates, so that hover, focus and open menus survive.
/// Each property of `Row`, a gadget with ==, is a role of that name; "id", reserved in QML, is called "rowId".
/// `identity`: the member that identifies a row.
template<typename Row>
class KeyedModel : public QAbstractListModel {
public:
    explicit KeyedModel(QString Row::* identity, QObject* parent = nullptr)
        : QAbstractListModel(parent), m_identity(identity) {}

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
            return {};
        }
        return Row::staticMetaObject.property(role - Qt::UserRole).readOnGadget(&m_rows[index.row()]);
    }

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override {
        QHash<int, QByteArray> names;
        for (int i = 0; i < Row::staticMetaObject.propertyCount(); ++i) {
            const QByteArray name = Row::staticMetaObject.property(i).name();
            names.insert(Qt::UserRole + i, name == "id" ? QByteArrayLiteral("rowId") : name);
        }
        return names;
    }

    /// Replaces the rows by removing, inserting, moving and updating single ones; equal rows notify nobody.
    void assign(const QList<Row>& rows) {
        const QStringList keys = rowKeys(rows);
        const QSet<QString> wanted(keys.begin(), keys.end());
        for (qsizetype i = m_rows.size() - 1; i >= 0; --i) {
            if (!wanted.contains(m_keys[i])) {
                const int row = static_cast<int>(i);
                beginRemoveRows({}, row, row);
                m_rows.removeAt(i);
                m_keys.removeAt(i);
                endRemoveRows();
            }
        }
        for (qsizetype i = 0; i < rows.size(); ++i) {
            const int row = static_cast<int>(i);
            const qsizetype at = m_keys.indexOf(keys[i], i);
            if (at < 0) {
                beginInsertRows({}, row, row);
                m_rows.insert(i, rows[i]);
                m_keys.insert(i, keys[i]);
                endInsertRows();
                continue;
            }
            if (at > i) {
                beginMoveRows({}, static_cast<int>(at), static_cast<int>(at), {}, row);
                m_rows.move(at, i);
                m_keys.move(at, i);
                endMoveRows();
            }
            update(row, rows[i]);
        }
    }

    [[nodiscard]] const QList<Row>& rows() const { return m_rows; }

private:
    void update(int row, const Row& value) {
        if (m_rows[row] == value) {
            return;
        }
        const Row old = std::exchange(m_rows[row], value);
        QList<int> roles;
        for (int i = 0; i < Row::staticMetaObject.propertyCount(); ++i) {
            const QMetaProperty property = Row::staticMetaObject.property(i);
            if (property.readOnGadget(&old) != property.readOnGadget(&value)) {
                roles.append(Qt::UserRole + i);
            }
        }
        if (!roles.isEmpty()) {
            Q_EMIT dataChanged(index(row), index(row), roles);
        }
    }

    /// Row keys: the identities, with a numeric suffix for duplicates.
    QStringList rowKeys(const QList<Row>& rows) const {
        QStringList keys;
        QHash<QString, int> seen;
        for (const Row& row : rows) {
            const QString key = row.*m_identity;
            const int count = seen[key]++;
            keys.append(count == 0 ? key : key + QChar(0x1f) + QString::number(count));
        }
        return keys;
    }

    QString Row::* m_identity;
    QList<Row> m_rows;
    QStringList m_keys;
};

} // namespace tunedeck
