#pragma once

#include "TunedeckMenu/Platform/FolderPicker.h"

#include <QFileDialog>
#include <QPointer>

namespace tunedeck {

/// The desktop's file dialog where Qt supports it, else Qt's own. Doesn't block.
class QtFolderPicker final : public FolderPicker {
public:
    ~QtFolderPicker() override;

    void choose(const QString& title, const QString& prompt, const QString& start,
                std::function<void(std::optional<QString>)> done) override;

private:
    QPointer<QFileDialog> m_dialog;
};

} // namespace tunedeck
