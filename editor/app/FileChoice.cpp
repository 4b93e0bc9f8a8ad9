#include "editor/app/FileChoice.h"

#include "editor/app/CPicturePreview.h"
#include "editor/core/Words.h"
#include "engine/elevation/ElevationFormats.h"
#include "engine/imaging/CodecTable.h"
#include "engine/imaging/PicturePreview.h"
#include "host/FileSystem.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QStandardPaths>
#include <QStringList>

#include <algorithm>
#include <cstring>

namespace
{

constexpr char DATA_FOLDER[] = "data";

// Takes no picture that cannot be read, which the preview gives the reason for: whoever asks would
// have dropped the one of before by then.
class CFileDialog : public QFileDialog
{
public:
    CFileDialog(QWidget* pParent, const QString& strFilter, bool bPictures)
        : QFileDialog(pParent, QString(), QString(), strFilter)
        , m_bPictures(bPictures)
    {
    }

protected:
    void accept() override
    {
        const QStringList files = selectedFiles();
        const QFileInfo file(files.isEmpty() ? QString() : files.front());
        if (!m_bPictures || !file.isFile() || MayBePicture(file.filePath()))
        {
            QFileDialog::accept();
        }
    }

private:
    static bool MayBePicture(const QString& strFile)
    {
        constexpr uint64_t MOST_PIXELS = 17'000'000; // that are read; of others the size will do
        const SPicturePreview preview =
            LoadPicturePreview(strFile.toUtf8().constData(), MOST_PIXELS);
        return preview.strWhy.empty() || preview.bSkipped;
    }

    bool m_bPictures;
};

// Where the dialog starts: the file when it is known, else the folder.
QString GetStart(const char* pszInitialName, const char* pszInitialFolder)
{
    if (pszInitialName != nullptr && *pszInitialName != '\0')
    {
        QString strFile = QString::fromStdString(fs::root_path(pszInitialName));
        if (QFileInfo(strFile).dir().exists())
        {
            return strFile;
        }
    }
    return QString::fromStdString(fs::root_path(pszInitialFolder));
}

void SetStart(QFileDialog& dialog, const QString& strStart)
{
    const QFileInfo start(strStart);
    dialog.setDirectory(start.isDir() ? start.filePath() : start.dir().path());
    if (!start.isDir())
    {
        dialog.selectFile(start.fileName());
    }
}

// Empty when the dialog was cancelled.
std::string Run(QFileDialog& dialog)
{
    const bool bChosen = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
    return bChosen ? dialog.selectedFiles().front().toStdString() : "";
}

// The dialog has asked about the very name; what is written is the file that the name means, which
// may be spelled otherwise.
bool MayReplace(QWidget* pParent, const std::string& strPath)
{
    const std::string strTarget = fs::root_path(strPath.c_str());
    if (strTarget == strPath || !fs::exists(strTarget.c_str()))
    {
        return true;
    }
    return QMessageBox::question(
               pParent,
               Words("Save"),
               QString::fromStdString(strTarget + Words("\nis there already. Replace it?"))) ==
           QMessageBox::Yes;
}

// Whether one of the patterns that the plug-in passes is that of pictures.
bool ChoosesPictures(const char* pszFilter)
{
    const QStringList pictures =
        QString::fromStdString(ListImageExtensions("*.", "|", false)).split('|');
    const QStringList patterns = QString::fromUtf8(pszFilter).split('|').mid(1);
    return std::any_of(patterns.begin(),
                       patterns.end(),
                       [&](const QString& strPattern)
                       { return pictures.contains(strPattern.trimmed(), Qt::CaseInsensitive); });
}

// Only Qt's own dialog has room for a preview; those of desktops do not know all formats.
void AddPreview(QFileDialog& dialog)
{
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    auto* pGrid = qobject_cast<QGridLayout*>(dialog.layout());
    if (pGrid == nullptr)
    {
        return;
    }
    auto* pPreview = new CPicturePreview(&dialog);
    pGrid->addWidget(pPreview, 0, pGrid->columnCount(), pGrid->rowCount(), 1);
    QObject::connect(&dialog,
                     &QFileDialog::currentChanged,
                     pPreview,
                     [pPreview](const QString& strPath) { pPreview->Show(strPath); });
    // The name is there before anything is selected, and may be typed.
    if (auto* pName = dialog.findChild<QLineEdit*>("fileNameEdit"))
    {
        QObject::connect(pName,
                         &QLineEdit::textChanged,
                         pPreview,
                         [pPreview, &dialog](const QString& strName)
                         { pPreview->Show(dialog.directory().absoluteFilePath(strName)); });
    }
    dialog.resize(dialog.sizeHint().expandedTo(dialog.size()));
}

} // namespace

QString MakeDialogFilter(const char* pszFilter)
{
    const QStringList parts = QString::fromUtf8(pszFilter).split('|', Qt::SkipEmptyParts);
    if (parts.size() < 2)
    {
        return Words("All files (*)");
    }
    // The description repeats the patterns in brackets; what counts are the patterns themselves.
    const QString strName = parts.front().section('(', 0, 0).trimmed();
    const QString strPatterns = QStringList(parts.mid(1)).join(' ');
    return QString(Words("%1 (%2);;All files (*)")).arg(strName, strPatterns);
}

QString GetHeightMapFilter()
{
    QStringList patterns;
    for (const SElevationFormat& format : GetElevationFormats())
    {
        for (const char* pszExtension : format.extensions)
        {
            if (pszExtension != nullptr && !format.bTerrain)
            {
                patterns << QString("*.") + pszExtension;
            }
        }
    }
    return QString(Words("Height maps (%1);;All files (*)")).arg(patterns.join(' '));
}

QString GetPictureFilter(const char* pszName)
{
    const std::string strPatterns = ListImageExtensions("*.", " ", false);
    return QString("%1 (%2)").arg(pszName, QString::fromStdString(strPatterns));
}

std::string MakeRootRelative(const std::string& strPath, bool bWrite)
{
    for (const std::string& strRoot : {fs::get_user_root(), fs::get_data_root()})
    {
        if (!strRoot.empty() && strPath.starts_with(strRoot + "/"))
        {
            // The relative path may find another file: one of the root that comes first.
            const std::string strRelative = strPath.substr(strRoot.size() + 1);
            return fs::root_path(strRelative.c_str()) == strPath ? strRelative : strPath;
        }
        // A relative path is written in the user's root and nowhere else.
        if (bWrite)
        {
            break;
        }
    }
    return strPath;
}

std::string GetSaveFolder(const std::string& strLevelFolder)
{
    const QFileInfo folder(QString::fromStdString(strLevelFolder));
    const bool bOurs = (strLevelFolder + "/").starts_with(fs::get_data_root() + "/data/");
    if (!strLevelFolder.empty() && folder.isDir() && folder.isWritable() && !bOurs)
    {
        return strLevelFolder;
    }
    const QString strDocuments =
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return (QFileInfo(strDocuments).isDir() ? strDocuments : QDir::homePath()).toStdString();
}

std::string ChooseSaveFile(QWidget* pParent, const SSaveChoice& choice)
{
    QFileDialog dialog(pParent, choice.strTitle, QString(), choice.strFilter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(choice.strSuffix);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !choice.bConfirm);
    SetStart(dialog, choice.strStart);
    std::string strPath = Run(dialog);
    while (choice.bConfirm && !strPath.empty() && !MayReplace(pParent, strPath))
    {
        strPath = Run(dialog);
    }
    return strPath;
}

std::string ChooseFile(QWidget* pParent,
                       EFileDialog eKind,
                       const char* pszDefaultExtension,
                       const char* pszInitialName,
                       const char* pszInitialFolder,
                       const char* pszFilter,
                       const std::string& strSaveFolder)
{
    // To save in "data" may mean the read-only root, so the level's folder takes its place.
    const bool bSaveFolder =
        eKind != FILE_DIALOG_OPEN &&
        (pszInitialFolder == nullptr || std::strcmp(pszInitialFolder, DATA_FOLDER) == 0);
    const char* pszFolder = pszInitialFolder != nullptr ? pszInitialFolder : "";
    const QString strStart =
        GetStart(pszInitialName, bSaveFolder ? strSaveFolder.c_str() : pszFolder);
    const QString strSuffix = QString::fromUtf8(pszDefaultExtension);
    const QString strFilter = MakeDialogFilter(pszFilter);
    if (eKind != FILE_DIALOG_OPEN && !strSuffix.isEmpty())
    {
        return MakeRootRelative(
            ChooseSaveFile(pParent, {QString(), strFilter, strSuffix, strStart}), true);
    }
    // Whoever opens a picture sees all that can be opened; what the plug-in asks for comes next.
    const bool bPictures = eKind == FILE_DIALOG_OPEN && ChoosesPictures(pszFilter);
    CFileDialog dialog(pParent,
                       bPictures ? GetPictureFilter(Words("All pictures")) + ";;" + strFilter
                                 : strFilter,
                       bPictures);
    dialog.setFileMode(eKind == FILE_DIALOG_OPEN ? QFileDialog::ExistingFile
                                                 : QFileDialog::AnyFile);
    dialog.setDefaultSuffix(strSuffix);
    if (bPictures)
    {
        AddPreview(dialog);
    }
    SetStart(dialog, strStart);
    const std::string strPath = Run(dialog);
    return MakeRootRelative(strPath, !fs::exists(strPath.c_str())); // a new one will be written
}
