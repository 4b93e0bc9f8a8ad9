#pragma once

#include <QPixmap>

#include <cstdint>
#include <string>

class CEditor;

// Small shaded pictures of the levels that were used last, as their files have them: made when a
// level is opened or saved, and dropped with its row in the list of recent files, so there are
// never more than that has. Owned by the window. UI thread.
class CLevelPictures
{
public:
    static constexpr uint32_t LONGER_SIDE = 96; // pixels of the window system

    CLevelPictures(CEditor& editor, std::string strFolder); // borrowed; made when it is needed

    // To be called when something may have been opened or saved. Costs a look at a few numbers when
    // nothing was.
    void Follow();

    // Of the file as the list of recent files has it; null when there is none.
    QPixmap Find(const std::string& strLevel) const;

private:
    std::string GetFile(const std::string& strLevel) const;
    void Make(const std::string& strLevel) const;
    void DropOthers() const;

    CEditor& m_Editor;
    std::string m_Folder;
    std::string m_Made; // the level and the state of its files that was looked at last
};
