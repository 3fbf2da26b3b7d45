#include "Tests/Gallery/FakeHost.h"
#include "TunedeckMenu/Views/Edge/PanelAdapter.h"

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
    const int id = model.roleNames().key("rowId");
    for (int round = 0; round < 400; ++round) {
        QList<JobRowView> next;
        const unsigned count = random() % 8;
        for (unsigned i = 0; i < count; ++i) {
            // Some ids occur twice.
            next.append({.id = QString::number(random() % 9), .playlist = QString::number(random() % 4)});
        }
        QHash<QString, QPersistentModelIndex> indexes;
        for (int i = 0; i < model.rowCount(); ++i) {
            const QString key = model.index(i).data(id).toString();
            if (!indexes.contains(key)) {
                indexes.insert(key, model.index(i));
            }
        }
        model.assign(next);
        ASSERT_EQ(model.rows(), next);
        for (auto row = indexes.cbegin(); row != indexes.cend(); ++row) {
            const bool remains = std::ranges::find(next, row.key(), &JobRowView::id) != next.end();
            ASSERT_EQ(row->isValid(), remains) << "round " << round;
            ASSERT_TRUE(!remains || row->data(id).toString() == row.key()) << "round " << round;
        }
    }
}

TEST(PanelAdapterTests, NotifiesOnlyAboutWhatChanged) {
    QQmlEngine engine;
    FakeHost host;
    PanelAdapter model(host.panel, engine);
    PanelContent content;
    content.header.status = u"Running"_s;
    content.assistants.links = {{.id = u"a"_s, .fields = {{.key = u"a.url"_s, .button = u"Copy"_s}}}};
    model.setContent(content);
    QSignalSpy header(&model, &PanelAdapter::headerChanged);
    QSignalSpy about(&model, &PanelAdapter::aboutChanged);
    QSignalSpy links(model.links(), &QAbstractItemModel::dataChanged);
    QSignalSpy inserted(model.links(), &QAbstractItemModel::rowsInserted);
    const int fields = model.links()->roleNames().key("fields");
    const auto* inner = model.links()->index(0, 0).data(fields).value<QAbstractItemModel*>();
    ASSERT_NE(inner, nullptr);
    model.setContent(content);
    EXPECT_EQ(header.size() + about.size() + links.size() + inserted.size(), 0);
    content.about.version = u"1.1"_s;
    content.assistants.links.first().fields.first().button = u"Copied"_s;
    model.setContent(content);
    EXPECT_EQ(about.size(), 1);
    EXPECT_EQ(header.size() + inserted.size(), 0);
    EXPECT_EQ(model.links()->index(0, 0).data(fields).value<QAbstractItemModel*>(), inner)
        << "a link's fields are kept";
    EXPECT_EQ(inner->index(0, 0).data(inner->roleNames().key("button")).toString(), u"Copied"_s);
}

} // namespace tunedeck::test
