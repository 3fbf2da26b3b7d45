// Looks for every text of the content on the screen, and for nothing else.
#include "Tests/Helpers/Views/Screen.h"

#include <QMetaProperty>
#include <QRegularExpression>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

namespace {

/// The texts in view values, each after the name of its property.
class Texts {
public:
    template<class... Views>
    explicit Texts(const Views&... views) {
        (add(views), ...);
    }
    QList<std::pair<QByteArray, QString>> all;

private:
    template<class View>
    void add(const View& view) {
        add(View::staticMetaObject, &view);
    }
    template<class View>
    void add(const QList<View>& rows) {
        for (const View& row : rows) {
            add(row);
        }
    }
    void add(const QMetaObject& type, const void* view) {
        const int shown = type.indexOfProperty("shown");
        if (shown >= 0 && !type.property(shown).readOnGadget(view).toBool()) {
            return;
        }
        static const QRegularExpression isNoText(u"^(id|key|chosen|renew|guide|disconnect|startUrl|.*[sS]ymbol)$"_s);
        for (int i = 0; i < type.propertyCount(); ++i) {
            const QMetaProperty property = type.property(i);
            const QVariant value = property.readOnGadget(view);
            if (isNoText.match(QString::fromLatin1(property.name())).hasMatch()) {
                continue;
            }
            if (const QMetaObject* const part = value.metaType().metaObject()) {
                add(*part, value.constData());
            } else if (value.canConvert<QStringList>()) {
                for (const QString& text : value.toStringList()) {
                    all.emplaceBack(QByteArray(type.className()) + "::" + property.name(), text);
                }
            }
        }
    }
};

class TextTests : public Screen {
protected:
    void expectOnScreen(const Texts& texts) {
        QString screen;
        for (const Element& element : elements()) {
            screen += element.name + u'\n' + element.description + u'\n';
        }
        auto longestFirst = texts.all;
        std::ranges::sort(longestFirst, std::greater(), [](const auto& text) { return text.second.size(); });
        QString rest = screen;
        for (const auto& [property, text] : longestFirst) {
            EXPECT_TRUE(screen.contains(text)) << property.constData() << ": " << qPrintable(text);
            rest.remove(text);
        }
        static const QRegularExpression isMarkup(u"[\\s\\d,.%]"_s);
        EXPECT_EQ(rest.remove(isMarkup).toStdString(), "") << "hidden by the content";
    }
};

} // namespace

TEST_F(TextTests, ThePanelShowsEveryTextAndNoOther) {
    PanelState offered = samples::usual();
    offered.update.value = UpdateState::Available{Release{.version = u"1.5.0"_s, .notes = u"Faster backups."_s}};
    offered.actionNote = u"Diagnostics copied."_s;

    for (const PanelState& state :
         {samples::checking(), samples::usual(), samples::stopped(), samples::troubled(), samples::busy(), offered}) {
        const PanelContent panel = contentOf(state);
        mainWindow(panel);
        if (const auto backups = controls(panel.rekordbox.backupsTitle); !backups.isEmpty()) {
            backups.first().press();
            wait(1);
        }
        expectOnScreen(Texts(panel, panel.recent.jobs, panel.assistants.links, panel.assistants.connect,
                             panel.rekordbox.failed, panel.rekordbox.backups));
        views.reset();
    }
}

TEST_F(TextTests, TheFirstRunShowsEveryTextAndNoOther) {
    OnboardingState offline = samples::toolsStep();
    offline.status.reset();
    OnboardingState failed = samples::toolsStep();
    failed.toolbox->installing = false;
    failed.toolbox->error = u"The download was cut off."_s;
    failed.error = u"Couldn't reach tunedeck to repair its tools."_s;
    OnboardingState later = samples::rekordboxStep();
    later.baseline.value = Baseline::Later{u"Rekordbox is open."_s};
    OnboardingState used = samples::assistantStep(Assistant::claude);
    used.link->lastUsedAt = samples::ago(60);

    for (const OnboardingState& state :
         {offline, samples::toolsStep(), failed, samples::rekordboxStep(), later, samples::assistantStep(),
          samples::assistantStep(Assistant::telegram), samples::assistantStep(Assistant::iphone), used}) {
        const OnboardingContent page = contentOf(state);
        onboarding(page);
        expectOnScreen(Texts(page, page.tools, page.assistants));
        views.reset();
    }
}

} // namespace tunedeck::test
