#include "TunedeckMenu/Platform/QtFolderPicker.h"

#include <utility>

namespace tunedeck {

QtFolderPicker::~QtFolderPicker() {
    delete m_dialog;
}

void QtFolderPicker::choose(const QString& title, const QString& prompt, const QString& start,
                            std::function<void(std::optional<QString>)> done) {
    if (m_dialog != nullptr) {
        m_dialog->setWindowState(m_dialog->windowState() & ~Qt::WindowMinimized);
        m_dialog->raise();
        m_dialog->activateWindow();
        return;
    }
    m_dialog = new QFileDialog(nullptr, title, start);
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->setFileMode(QFileDialog::Directory);
    m_dialog->setOption(QFileDialog::ShowDirsOnly);
    m_dialog->setLabelText(QFileDialog::Accept, prompt);
    m_dialog->setWindowModality(Qt::NonModal);
    QObject::connect(m_dialog, &QFileDialog::finished, m_dialog, [this, done = std::move(done)](int result) {
        const auto chosen = std::exchange(m_dialog, nullptr)->selectedFiles(); // WA_DeleteOnClose deletes it
        done(result == QDialog::Accepted && !chosen.isEmpty() ? std::optional(chosen.first()) : std::nullopt);
    });
    m_dialog->show();
    m_dialog->activateWindow();
}

} // namespace tunedeck
