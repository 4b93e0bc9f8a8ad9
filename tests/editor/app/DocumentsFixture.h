#pragma once

#include "editor/app/CImportDialog.h"
#include "tests/editor/app/EditorFixture.h"

#include <QApplication>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

// Levels as files in the window of the editor: its file dialogs and questions answered by hand.
class CDocuments : public CEditorFixture
{
protected:
    // Works the file dialog that the work opens as a hand does: a name and Return.
    void ChooseFile(const std::function<void()>& work, const std::string& strPath)
    {
        Answer<QFileDialog>(work,
                            [&](QFileDialog& dialog)
                            {
                                auto* pName = dialog.findChild<QLineEdit*>("fileNameEdit");
                                pName->setText(QString::fromStdString(strPath));
                                pName->setFocus();
                                Key("Return");
                            });
    }

    // The same; the question that follows is answered with that button. Returns its text.
    std::string ChooseFileAnd(const std::function<void()>& work,
                              const std::string& strPath,
                              const char* pszButton)
    {
        std::string strText;
        QTimer timer;
        timer.callOnTimeout(
            [&]
            {
                auto* pBox = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
                if (pBox != nullptr && strText.empty())
                {
                    strText = pBox->text().toStdString();
                    Press(*pBox, pszButton);
                }
            });
        timer.start(20);
        ChooseFile(work, strPath);
        return strText;
    }

    static void Press(QMessageBox& box, const char* pszButton)
    {
        for (QAbstractButton* pButton : box.buttons())
        {
            if (pButton->text().remove('&') == pszButton)
            {
                pButton->click();
                return;
            }
        }
        ADD_FAILURE() << "no such button: " << pszButton;
        box.reject();
    }

    // What the dialog of a plug-in that saves returns. strStart: the folder it starts in.
    std::string Browse(const std::string& strPath, std::string& strStart)
    {
        std::string strResult;
        Answer<QFileDialog>(
            [&] {
                strResult =
                    GetHost().BrowseForFile(FILE_DIALOG_SAVE, "stl", nullptr, "data", nullptr);
            },
            [&](QFileDialog& dialog)
            {
                strStart = dialog.directory().absolutePath().toStdString();
                dialog.findChild<QLineEdit*>("fileNameEdit")
                    ->setText(QString::fromStdString(strPath));
                dialog.findChild<QLineEdit*>("fileNameEdit")->setFocus();
                Key("Return");
            });
        return strResult;
    }

    // Asks the window to close; answers with that button. True when it closed.
    bool CloseAnd(QMessageBox::StandardButton eButton)
    {
        Answer<QMessageBox>([this] { m_Window->close(); },
                            [&](QMessageBox& box)
                            {
                                EXPECT_TRUE(box.text().startsWith("Save the changes of"));
                                SavePicture("unsaved-changes");
                                Click(*box.button(eButton));
                            });
        return !m_Window->isVisible();
    }

    void Sculpt()
    {
        ASSERT_NO_FATAL_FAILURE(TakeBrush());
        Drag(GetView(), {0.4, 0.5}, {0.6, 0.5}, 4);
        ASSERT_TRUE(m_Editor->GetDocument().IsModified());
    }

    std::string SaveLevel()
    {
        const std::string strPath = m_Folder.Path("levels/valley.level");
        std::filesystem::create_directories(m_Folder.Path("levels"));
        ChooseFile([this] { Key("ctrl+shift+s"); }, strPath);
        EXPECT_TRUE(std::filesystem::exists(strPath));
        return strPath;
    }

    // Opens a file and answers what comes: the import dialog with that target, questions with that
    // button, anything else with its own. Gives the texts of the boxes.
    QStringList OpenAnd(const std::string& strPath,
                        QMessageBox::StandardButton eButton,
                        EImportAs eAs = EImportAs::NewLevel)
    {
        QStringList texts;
        QTimer timer;
        timer.callOnTimeout(
            [&]
            {
                if (auto* pImport = dynamic_cast<CImportDialog*>(QApplication::activeModalWidget()))
                {
                    auto* pTarget = pImport->findChild<QComboBox*>("import-target");
                    pTarget->setCurrentIndex(pTarget->findData(static_cast<int>(eAs)));
                    // It comes back where the question that follows is cancelled.
                    texts.isEmpty() ? pImport->accept() : pImport->reject();
                }
                if (auto* pBox = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget()))
                {
                    texts << pBox->text();
                    QAbstractButton* pButton = pBox->button(eButton);
                    (pButton != nullptr ? pButton : pBox->buttons().front())->click();
                }
            });
        timer.start(20);
        m_Window->GetDocuments().OpenFile(strPath);
        Settle();
        return texts;
    }

    void Drop(const std::string& strPath)
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QString::fromStdString(strPath))});
        QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_Window.get(), &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent drop({50.0, 50.0}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_Window.get(), &drop);
        Settle();
    }
};
