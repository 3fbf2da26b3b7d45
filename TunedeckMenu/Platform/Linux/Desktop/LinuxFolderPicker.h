#pragma once

#include "TunedeckMenu/Platform/FolderPicker.h"

#include <QFileDialog>
#include <QPointer>

namespace tunedeck {

/// The desktop's file dialog where Qt's platform has it, else Qt's own; the event loop goes on behind it.
class LinuxFolderPicker final : public FolderPicker {
public:
    ~LinuxFolderPicker() override;

    /// While a picker is open it is brought to the front, and the second question is answered with nothing at once.
    void choose(const QString& title, const QString& prompt, const QString& start,
                std::function<void(std::optional<QString>)> done) override;

private:
    QPointer<QFileDialog> m_dialog;
};

} // namespace tunedeck
