#pragma once

#include "TunedeckMenu/Panel/RowSlice.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace tunedeck {

/// A list whose rows exist only in the range that is in sight.
class RowModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    Q_PROPERTY(int total READ total NOTIFY totalChanged)
    Q_PROPERTY(int first READ first NOTIFY firstChanged)
public:
    /// The number of rows of the whole list.
    [[nodiscard]] int total() const { return m_total; }
    /// The index of the first row that exists.
    [[nodiscard]] int first() const { return m_before; }
    /// Requests the rows of a range, which may arrive later.
    Q_INVOKABLE void request(int first, int size) const { onRequest({.first = first, .size = size}); }

    std::function<void(RowRange)> onRequest = [](RowRange) {};

Q_SIGNALS:
    void totalChanged();
    /// Emitted after the rows have changed.
    void firstChanged();

protected:
    /// Called after the rows have changed.
    void setSurroundings(int before, int after);

private:
    int m_total = 0;
    int m_before = 0;
};

} // namespace tunedeck
