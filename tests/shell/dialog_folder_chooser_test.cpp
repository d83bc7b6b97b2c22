#include "app/shell/dialog_folder_chooser.h"

#include "tests/contracts/folder_chooser_contract.h"
#include "tests/shell/qt_environment.h"

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>

namespace bridge {
namespace {

class DialogUnderTest : public FolderChooserUnderTest {
public:
    FolderChooser& chooser() override { return m_chooser; }
    bool comesTrue(const std::function<bool()>& condition) override { return bridge::comesTrue(condition); }
    bool isOpen() override { return dialog() != nullptr; }
    std::string title() override { return dialog()->windowTitle().toStdString(); }
    std::string shownText() override { return dialog()->findChild<QLabel*>("message")->text().toStdString(); }
    std::string confirmLabel() override { return dialog()->labelText(QFileDialog::Accept).toStdString(); }
    void choose(const std::filesystem::path& folder) override {
        dialog()->findChild<QLineEdit*>()->setText(QString::fromStdString(folder.string()));
        dialog()->findChild<QLineEdit*>()->setFocus();
        static_cast<QDialog*>(dialog())->accept();
    }
    void cancel() override { dialog()->reject(); }

private:
    static QFileDialog* dialog() {
        for (auto* window : QApplication::topLevelWidgets())
            if (auto* found = qobject_cast<QFileDialog*>(window); found && found->isVisible()) return found;
        return nullptr;
    }

    DialogFolderChooser m_chooser;
};

INSTANTIATE_TEST_SUITE_P(Dialog, FolderChooserContract,
                         testing::Values([] { return std::make_unique<DialogUnderTest>(); }));

} // namespace
} // namespace bridge
