#pragma once

#include "TunedeckMenu/Platform/StatusItem.h"

#import <AppKit/AppKit.h>

@class MacStatusItemTarget;

namespace tunedeck {

/// An item in the menu bar. A click opens the panel, so it has no menu.
class MacStatusItem final : public StatusItem {
public:
    MacStatusItem();
    ~MacStatusItem() override;

    void install() override;
    [[nodiscard]] bool isAvailable() const override;
    [[nodiscard]] bool needsTray() const override { return false; }
    void setSymbol(const QString& symbol, const QString& toolTip) override;
    void setMenu(const TrayMenu& /*menu*/) override {}
    [[nodiscard]] std::optional<QRect> geometry() const override;
    [[nodiscard]] std::optional<MenuBarPlacement> placement() const override;

private:
    void draw();
    [[nodiscard]] NSWindow* window() const;

    MacStatusItemTarget* m_target;
    NSStatusItem* m_item = nil;
    QString m_symbol;
    QString m_toolTip;
};

} // namespace tunedeck
