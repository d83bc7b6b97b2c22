#include "app/shell/dialog_folder_chooser.h"

#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QWindow>

#include <coroutine>
#include <memory>

namespace bridge {

namespace {

// It may be in the middle of telling us something.
struct DeleteLater {
    void operator()(QFileDialog* dialog) const {
        dialog->hide();
        dialog->deleteLater();
    }
};
using Dialog = std::unique_ptr<QFileDialog, DeleteLater>;

Dialog dialogFor(const FolderQuestion& question) {
    Dialog dialog(new QFileDialog);
    dialog->setObjectName("folderChooser");
    dialog->setWindowTitle(QString::fromStdString(question.title));
    dialog->setFileMode(QFileDialog::Directory);
    // Another's dialog would have no place for the message.
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setLabelText(QFileDialog::Accept, QString::fromStdString(question.confirmLabel));
    dialog->setWindowModality(Qt::ApplicationModal);
    if (auto* grid = qobject_cast<QGridLayout*>(dialog->layout())) {
        auto* message = new QLabel(QString::fromStdString(question.message), dialog.get());
        message->setObjectName("message");
        message->setWordWrap(true);
        grid->addWidget(message, grid->rowCount(), 0, 1, grid->columnCount());
    }
    return dialog;
}

// Before the popover that the user has come from, and not behind it.
void putBefore(QFileDialog& dialog, QWindow* window) {
    if (!window) return;
    dialog.winId(); // its window is made by being asked for
    dialog.windowHandle()->setTransientParent(window);
}

struct Answer {
    Dialog dialog;
    std::coroutine_handle<> waiter{};
    int result = QDialog::Rejected;

    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> handle) {
        waiter = handle;
        QObject::connect(dialog.get(), &QDialog::finished, dialog.get(), [this](int code) {
            result = code;
            // It is told once, whatever becomes of the dialog.
            dialog->disconnect(SIGNAL(finished(int)));
            waiter.resume();
        });
        dialog->show();
    }
    std::optional<std::string> await_resume() const {
        const auto chosen = dialog->selectedFiles();
        if (result != QDialog::Accepted || chosen.isEmpty()) return std::nullopt;
        return QFile::encodeName(chosen.first()).toStdString();
    }
};

} // namespace

Task<std::optional<std::string>> DialogFolderChooser::choose(FolderQuestion question) {
    Answer answer{dialogFor(question)};
    putBefore(*answer.dialog, QGuiApplication::focusWindow());
    co_return co_await answer;
}

} // namespace bridge
