#include "Tests/Helpers/Test.h"
#include "Tests/Panel/Fixtures.h"

namespace tunedeck::test {

TEST(AboutCard, ShowsEachStateOfTheUpdate) {
    const QString installing = u"Installing the update… Tunedeck restarts when it's done."_s;
    const struct {
        UpdateState update;
        QStringList texts; ///< text, detail, button, help of disabled buttons
        double progress = -1;
    } cases[] = {
        {{UpdateState::Idle{}}, {u"Tunedeck checks for updates once a day."_s, {}, {}, {}}},
        {{UpdateState::Checking{}}, {u"Checking for updates…"_s, {}, {}, u"Checking for updates…"_s}},
        {{UpdateState::UpToDate{moment().addSecs(-305)}}, {u"Up to date · checked 5 minutes ago"_s, {}, {}, {}}},
        {{UpdateState::Available{{.version = u"2.0.0"_s, .notes = u"Faster."_s}}},
         {u"Tunedeck 2.0.0 is available."_s, u"Faster."_s, u"Update to 2.0.0"_s, {}}},
        {{UpdateState::Installing{}}, {installing, {}, {}, installing}},
        {{UpdateState::Installing{0.5}}, {installing, {}, {}, installing}, 0.5},
        {{UpdateState::Failed{u"no network"_s}}, {u"Couldn't check for updates: no network"_s, {}, {}, {}}},
    };
    for (const auto& [update, texts, progress] : cases) {
        const AboutView card = aboutCard(u"1.0.0"_s, update, moment());
        EXPECT_EQ((QStringList{card.updateText, card.updateDetail, card.updateButton, card.busyHelp}), texts);
        EXPECT_EQ(card.busy, !card.busyHelp.isEmpty());
        EXPECT_EQ(card.progress, progress);
    }
    EXPECT_EQ(aboutCard(u"1.0.0"_s, {}, moment()).version, u"Version 1.0.0");
}

} // namespace tunedeck::test
