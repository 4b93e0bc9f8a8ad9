#include "editor/app/CHelpCommands.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CDocumentQuestions.h"
#include "editor/app/CEditor.h"
#include "editor/app/CFaultReport.h"
#include "editor/app/CGuideWindow.h"
#include "editor/app/CKeyEdit.h"
#include "editor/app/CKeyListDialog.h"
#include "editor/app/CViewArea.h"
#include "editor/app/GuidePages.h"
#include "editor/app/KeyChords.h"
#include "editor/core/Words.h"
#include "host/CommandLine.h"
#include "host/FileSystem.h"
#include "host/Notice.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace
{

constexpr char GUIDE_KEY[] = "help.guide";
constexpr char LICENCES[] = "THIRD-PARTY.md";
constexpr int ABOUT_WIDTH = 90; // characters
constexpr int ABOUT_HEIGHT = 34;

// "Mesa llvmpipe, OpenGL 3.3", of the context that the view draws with.
QString GetRenderer(CViewWidget* pView)
{
    if (pView == nullptr || pView->context() == nullptr)
    {
        return Words("not known yet");
    }
    pView->makeCurrent();
    QOpenGLFunctions& functions = *pView->context()->functions();
    const auto get = [&functions](GLenum eName)
    {
        return QString::fromUtf8(reinterpret_cast<const char*>(functions.glGetString(eName)));
    };
    QString strText = get(GL_RENDERER) + ", OpenGL " + get(GL_VERSION);
    pView->doneCurrent();
    return strText;
}

} // namespace

CHelpCommands::CHelpCommands(QWidget& window,
                             CEditor& editor,
                             CViewArea& views,
                             CDocumentQuestions& questions)
    : m_Window(window)
    , m_Editor(editor)
    , m_Views(views)
    , m_Questions(questions)
{
    qApp->installEventFilter(this);
}

void CHelpCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    const auto search = [this]
    {
        ShowPage();
        m_pGuide->FocusSearch();
    };
    commands.Add(
        menu,
        {
            SCommand::Run(GUIDE_KEY, "&Guide", Key(Qt::Key_F1), [this] { ShowPage(); }),
            SCommand::Run("help.search", "&Search the guide...", NO_KEY, search),
            SCommand::Run("help.keys", "&Keys", NO_KEY, [this] { ShowKeys(); }),
            SCommand::Line(),
            SCommand::Run("help.report", "&Report a fault...", NO_KEY, [this] { ReportFault(); }),
            SCommand::Line(),
            SCommand::Run("help.about", "&About Tellur", NO_KEY, [this] { ShowAbout(); }),
        });
}

bool CHelpCommands::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() != QEvent::KeyPress || !pWatched->isWidgetType())
    {
        return false;
    }
    const auto* pWidget = static_cast<QWidget*>(pWatched);
    const SKeyCommand* pCommand = m_Editor.GetKeys().FindById(GUIDE_KEY);
    const bool bKey = pCommand != nullptr && pCommand->key.uKey != 0 &&
                      pCommand->key == GetChord(*static_cast<QKeyEvent*>(pEvent));
    const bool bDialog = pWidget->window() != &m_Window && pWidget->window()->inherits("QDialog");
    if (!bKey || !bDialog || dynamic_cast<const CKeyEdit*>(pWidget) != nullptr) // it takes any key
    {
        return false;
    }
    ShowPage();
    return true;
}

// A dialog that keeps the other windows from being used lets its own children be.
CGuideWindow& CHelpCommands::OpenGuide()
{
    QWidget* pModal = QApplication::activeModalWidget();
    QWidget* pParent = pModal != nullptr ? pModal : &m_Window;
    if (m_pGuide != nullptr && m_pGuide->parentWidget() != pParent)
    {
        m_pGuide->hide();
        m_pGuide->deleteLater();
        m_pGuide.clear();
    }
    if (m_pGuide == nullptr)
    {
        m_pGuide = new CGuideWindow(pParent);
    }
    m_pGuide->show();
    m_pGuide->raise();
    m_pGuide->activateWindow();
    return *m_pGuide;
}

void CHelpCommands::ShowPage()
{
    const QWidget* pFocus = QApplication::focusWidget();
    if (m_pGuide != nullptr && m_pGuide->isAncestorOf(pFocus))
    {
        m_pGuide->activateWindow(); // it is being read
        return;
    }
    pFocus = pFocus != nullptr ? pFocus : QApplication::activeWindow();
    const QString strPage = FindGuidePage(pFocus); // before the guide takes the keyboard
    OpenGuide().ShowGuide(strPage);
}

void CHelpCommands::ShowKeys()
{
    CKeyListDialog dialog(&m_Window, m_Editor.GetKeys());
    dialog.exec();
}

QString CHelpCommands::DescribeSystem() const
{
    return QString(Words("Qt %1 on %2 (%3)\nScreen %4 x %5, scale %6\nRenderer %7\n"))
        .arg(qVersion(), QSysInfo::prettyProductName(), QGuiApplication::platformName())
        .arg(m_Window.screen()->size().width())
        .arg(m_Window.screen()->size().height())
        .arg(m_Window.devicePixelRatioF())
        .arg(GetRenderer(m_Views.GetActive()));
}

void CHelpCommands::ReportFault()
{
    const CFaultReport report(m_Editor, DescribeSystem());
    QMessageBox box(
        QMessageBox::Information,
        Words("Report a fault"),
        Words("One file with what helps to find the fault. The level's heights and pictures "
              "are not in it, but steps that are not saved are. Nothing is sent: where it "
              "goes is up to you."),
        QMessageBox::Save | QMessageBox::Cancel,
        &m_Window);
    box.setInformativeText(report.GetContents().join('\n'));
    box.setTextFormat(Qt::PlainText);
    if (box.exec() != QMessageBox::Save)
    {
        return;
    }
    std::string strFile =
        m_Questions.AskForFile(true, Words("Save the report"), Words("Fault reports (*.tar.gz)"));
    if (strFile.empty())
    {
        return;
    }
    const CSaveNotice notice;
    if (m_Questions.Report(report.Write(strFile), Words("The report cannot be written.")))
    {
        notice.Say(strFile.c_str());
    }
}

void CHelpCommands::ShowAbout()
{
    QDialog dialog(&m_Window);
    dialog.setObjectName("about");
    dialog.setWindowTitle(Words("About Tellur"));
    auto* pText =
        new QLabel(QString("Tellur %1\n%2").arg(GetProgramVersion(), DescribeSystem()), &dialog);
    pText->setObjectName("about-text");
    pText->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* pLicences = new QTextBrowser(&dialog);
    pLicences->setObjectName("about-licences");
    pLicences->setAccessibleName(Words("Libraries and their licences"));
    pLicences->setOpenLinks(false);
    pLicences->setSource(QUrl::fromLocalFile(QString::fromStdString(fs::root_path(LICENCES))),
                         QTextDocument::MarkdownResource);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
    QObject::connect(pButtons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* pLayout = new QVBoxLayout(&dialog);
    pLayout->addWidget(pText);
    pLayout->addWidget(pLicences, 1);
    pLayout->addWidget(pButtons);
    dialog.resize(dialog.fontMetrics().averageCharWidth() * ABOUT_WIDTH,
                  dialog.fontMetrics().height() * ABOUT_HEIGHT);
    dialog.exec();
}
