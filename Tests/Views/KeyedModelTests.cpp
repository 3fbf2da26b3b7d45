#include "TunedeckMenu/Panel/Cards/RecentCard.h"
#include "TunedeckMenu/Views/Edge/KeyedModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

TEST(KeyedModelTests, KeepsRowsWhoseKeyRemains) {
    std::mt19937 random(20261121);
    KeyedModel<JobRowView> model(&JobRowView::id);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const auto rowAt = [](const QModelIndex& index) { return index.data(Qt::UserRole).value<JobRowView>(); };
    for (int round = 0; round < 400; ++round) {
        QList<JobRowView> next;
        const unsigned count = random() % 8;
        for (unsigned i = 0; i < count; ++i) {
            // Some ids occur twice.
            next.append({.id = QString::number(random() % 9), .playlist = QString::number(random() % 4)});
        }
        QHash<QString, QPersistentModelIndex> indexes;
        for (int i = 0; i < model.rowCount(); ++i) {
            const QString key = rowAt(model.index(i)).id;
            if (!indexes.contains(key)) {
                indexes.insert(key, model.index(i));
            }
        }
        model.assign(next);
        QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
        model.assign(next);
        ASSERT_EQ(changes.size(), 0) << "equal rows";
        ASSERT_EQ(model.rowCount(), next.size());
        for (int i = 0; i < model.rowCount(); ++i) {
            ASSERT_EQ(rowAt(model.index(i)), next[i]) << "round " << round;
        }
        for (auto row = indexes.cbegin(); row != indexes.cend(); ++row) {
            const bool remains = std::ranges::find(next, row.key(), &JobRowView::id) != next.end();
            ASSERT_EQ(row->isValid(), remains) << "round " << round;
            ASSERT_TRUE(!remains || rowAt(*row).id == row.key()) << "round " << round;
        }
    }
}

} // namespace tunedeck::test
