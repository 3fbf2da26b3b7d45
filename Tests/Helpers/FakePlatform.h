#pragma once

#include "TunedeckMenu/Platform/AppearanceSource.h"
#include "TunedeckMenu/Platform/FolderPicker.h"
#include "TunedeckMenu/Platform/LoginItem.h"
#include "TunedeckMenu/Platform/NotificationCenter.h"
#include "TunedeckMenu/Platform/Pasteboard.h"
#include "TunedeckMenu/Platform/Relauncher.h"
#include "TunedeckMenu/Platform/StatusItem.h"
#include "TunedeckMenu/Platform/UserNotification.h"
#include "TunedeckMenu/Platform/Workspace.h"

#include <QStringList>

#include <utility>
#include <vector>

namespace tunedeck::test {

/// Docked and clicked by the test.
class FakeStatusItem final : public StatusItem {
public:
    void install() override { ++installs; }
    [[nodiscard]] bool isAvailable() const override { return available; }
    [[nodiscard]] bool needsTray() const override { return true; }
    void setSymbol(const QString& newSymbol, const QString& newToolTip) override {
        symbol = newSymbol;
        toolTip = newToolTip;
    }
    void setMenu(const TrayMenu& newMenu) override { menu = newMenu; }
    [[nodiscard]] std::optional<QRect> geometry() const override { return rectangle; }
    [[nodiscard]] std::optional<MenuBarPlacement> placement() const override { return place; }

    void setAvailable(bool isNowAvailable) {
        available = isNowAvailable;
        Q_EMIT availabilityChanged();
    }

    int installs = 0;
    bool available = true;
    QString symbol;
    QString toolTip;
    TrayMenu menu;
    std::optional<QRect> rectangle;
    std::optional<MenuBarPlacement> place = MenuBarPlacement{.itemMinX = 1200, .itemWidth = 24, .screenWidth = 1600};
};

/// Records the notifications.
class FakeNotificationCenter final : public NotificationCenter {
public:
    void start() override { ++starts; }
    void post(const UserNotification& notification) override { posted.push_back(notification); }

    int starts = 0;
    std::vector<UserNotification> posted;
};

/// Records what is opened.
class FakeWorkspace final : public Workspace {
public:
    bool open(const QUrl& url) override {
        opened.push_back(url);
        return works;
    }
    void reveal(const QString& path) override { revealed << path; }
    QIcon icon(const QString&) override { return {}; }

    bool works = true; ///< what open() returns
    std::vector<QUrl> opened;
    QStringList revealed;
};

/// Keeps its state, or fails with a sentence.
class FakeLoginItem final : public LoginItem {
public:
    [[nodiscard]] bool isEnabled() const override { return enabled; }
    std::expected<void, QString> setEnabled(bool isNowEnabled) override {
        if (!failure.isEmpty()) {
            return std::unexpected(failure);
        }
        enabled = isNowEnabled;
        return {};
    }

    bool enabled = false;
    QString failure;
};

class FakePasteboard final : public Pasteboard {
public:
    void setText(const QString& newText) override {
        text = newText;
        isSecret = false;
    }
    void setSecret(const QString& newText) override {
        text = newText;
        isSecret = true;
    }

    QString text;
    bool isSecret = false;
};

/// Answered by the test.
class FakeFolderPicker final : public FolderPicker {
public:
    void choose(const QString& /*title*/, const QString& newPrompt, const QString& newStart,
                std::function<void(std::optional<QString>)> done) override {
        ++calls;
        prompt = newPrompt;
        start = newStart;
        answer = std::move(done);
    }

    int calls = 0;
    QString prompt;
    QString start;
    std::function<void(std::optional<QString>)> answer; ///< set while the picker is open
};

class FakeAppearanceSource final : public AppearanceSource {
public:
    [[nodiscard]] Appearance current() const override { return appearance; }
    void set(const Appearance& newAppearance) {
        appearance = newAppearance;
        Q_EMIT changed();
    }

    Appearance appearance;
};

/// Records the relaunches and starts nothing.
class FakeRelauncher final : public Relauncher {
public:
    bool relaunch(const QString& bundle, const QStringList& arguments) override {
        relaunched.emplace_back(bundle, arguments);
        return works;
    }
    [[nodiscard]] bool isReplaced(const QString&) const override { return false; }

    std::vector<std::pair<QString, QStringList>> relaunched;
    bool works = true;
};

} // namespace tunedeck::test
