#pragma once

#include "TunedeckMenu/Panel/RowSlice.h"
#include "TunedeckMenu/Views/Edge/RowModel.h"

#include <QHash>
#include <QList>
#include <QSet>

namespace tunedeck {

/// A list model that keeps the rows of equal identity across updates, so that hover, focus and open menus survive. Its
/// only role, "view", is the row, a gadget with ==. `identity`: the member that identifies a row.
template<typename Row>
class KeyedModel : public RowModel {
public:
    explicit KeyedModel(QString Row::* identity) : m_identity(identity) {}

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        const bool known = checkIndex(index, CheckIndexOption::IndexIsValid) && role == Qt::UserRole;
        return known ? QVariant::fromValue(m_rows[index.row()]) : QVariant();
    }

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override { return {{Qt::UserRole, "view"}}; }

    /// Like assign() for all rows of a slice.
    void assignSlice(const RowSlice<Row>& slice) {
        assign(slice.rows);
        setSurroundings(slice.before, slice.after);
    }

    /// Replaces the rows by removing, inserting, moving and updating single ones; equal rows notify nobody.
    void assign(const QList<Row>& rows) {
        const QStringList keys = rowKeys(rows);
        const QSet<QString> wanted(keys.begin(), keys.end());
        for (int i = rowCount() - 1; i >= 0; --i) {
            if (!wanted.contains(m_keys[i])) {
                beginRemoveRows({}, i, i);
                m_rows.removeAt(i);
                m_keys.removeAt(i);
                endRemoveRows();
            }
        }
        for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
            const int at = static_cast<int>(m_keys.indexOf(keys[i], i));
            if (at < 0) {
                beginInsertRows({}, i, i);
                m_rows.insert(i, rows[i]);
                m_keys.insert(i, keys[i]);
                endInsertRows();
                continue;
            }
            if (at > i) {
                beginMoveRows({}, at, at, {}, i);
                m_rows.move(at, i);
                m_keys.move(at, i);
                endMoveRows();
            }
            if (m_rows[i] != rows[i]) {
                m_rows[i] = rows[i];
                Q_EMIT dataChanged(index(i), index(i));
            }
        }
    }

private:
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
