#pragma once

#include <QObject>
#include <QPointer>

class CCommandList;
class CDocumentQuestions;
class CEditor;
class CGuideWindow;
class CViewArea;
class QMenu;
class QWidget;

// The commands that tell about the program: the guide, at the heading of what has the keyboard, the
// keys, a report of a fault, and what the program is made of. Owned by the menus. UI thread.
class CHelpCommands : public QObject
{
public:
    // Borrowed. window: of the dialogs.
    CHelpCommands(QWidget& window,
                  CEditor& editor,
                  CViewArea& views,
                  CDocumentQuestions& questions);

    void AddTo(QMenu& menu, CCommandList& commands);

protected:
    // The key of the guide in dialogs, where the window's commands have none.
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    CGuideWindow& OpenGuide();
    void ShowPage();
    void ShowKeys();
    void ReportFault();
    void ShowAbout();
    QString DescribeSystem() const;

    QWidget& m_Window;
    CEditor& m_Editor;
    CViewArea& m_Views;
    CDocumentQuestions& m_Questions;
    QPointer<CGuideWindow> m_pGuide; // deletes itself when it is closed
};
