#pragma once

#include "TunedeckMenu/Platform/Desktop.h"

#include <QFileDialog>
#include <QPointer>

namespace tunedeck {

/// The session's clipboard.
class QtPasteboard final : public Pasteboard {
public:
    void setText(const QString& text) override;
};

/// The desktop's file dialog where Qt's platform has it, else Qt's own; the event loop goes on behind it.
class QtFolderPicker final : public FolderPicker {
public:
    ~QtFolderPicker() override;

    /// While a picker is open it is brought to the front, and the second question is answered with nothing at once.
    void choose(const QString& title, const QString& prompt, const QString& start,
                std::function<void(std::optional<QString>)> done) override;

private:
    QPointer<QFileDialog> m_dialog;
};

} // namespace tunedeck
