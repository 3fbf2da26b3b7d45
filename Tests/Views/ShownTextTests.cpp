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
    for (const auto& [name, state] : samples::panels()) {
        const PanelContent panel = contentOf(state);
        SCOPED_TRACE(name.toStdString());
        mainWindow(panel);
        for (const auto& job : panel.recent.jobs) {
            if (!job.openName.isEmpty()) {
                press(job.openName);
            }
        }
        if (const auto backups = controls(panel.rekordbox.backupsTitle); !backups.isEmpty()) {
            backups.first().press();
            wait(1);
        }
        expectOnScreen(Texts(panel, panel.recent.jobs, panel.assistants.links.rows, panel.assistants.connect,
                             panel.rekordbox.failed.rows, panel.rekordbox.backups.rows));
        views.reset();
    }
}

TEST_F(TextTests, TheFirstRunShowsEveryTextAndNoOther) {
    for (const auto& [name, state] : samples::firstRuns()) {
        const OnboardingContent page = contentOf(state);
        SCOPED_TRACE(name.toStdString());
        onboarding(page);
        expectOnScreen(Texts(page, page.tools.rows, page.assistants));
        views.reset();
    }
}

} // namespace tunedeck::test
