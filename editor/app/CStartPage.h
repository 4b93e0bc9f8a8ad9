#pragma once

#include <QWidget>

#include <functional>
#include <vector>

class QCommandLinkButton;
class QLabel;
class QVBoxLayout;

// Something to begin with, as a button.
struct SStartEntry
{
    QString strName; // of the widget; empty for a recent level
    QString strTitle;
    QString strText; // a second line
    QPixmap picture; // null: none
    std::function<void()> run;
};

// What stands in the middle of the window as long as there is no level: ways to begin, and the
// levels of the last days with their pictures. It lies over the views, which have their place and
// size below it, and has the keyboard where they would have it. All of it are buttons: Tab and
// arrows go through them, Enter presses. Owned by the window. UI thread.
class CStartPage : public QWidget
{
public:
    // views: borrowed, in their window already; the page is always where they are.
    CStartPage(QWidget& views, const std::vector<SStartEntry>& entries);

    void ShowRecent(const std::vector<SStartEntry>& levels); // newest first
    void Begin();                                            // over the views
    void End(); // takes itself away. The keyboard, if it was here, is the caller's to give on

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override; // views; after the end, the mouse
    void focusInEvent(QFocusEvent* pEvent) override;

private:
    QCommandLinkButton* AddEntry(QVBoxLayout& column, const SStartEntry& entry);
    void Follow();

    QWidget& m_Views;
    QVBoxLayout* m_pRecent;
    QLabel* m_pNoRecent;
    std::vector<QCommandLinkButton*> m_Recent;
    QCommandLinkButton* m_pFirst = nullptr; // of the entries
    QCommandLinkButton* m_pLast = nullptr;
    bool m_bSecondClick = false; // may come, of the click that has taken the page away
};
