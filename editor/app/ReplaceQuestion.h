#pragma once

#include "editor/core/CLevelFiles.h"

#include <vector>

class QWidget;

enum class EReplaceAnswer
{
    Replace,
    Elsewhere, // under another name
    Cancel,
};

// Names the files that a save would replace and nobody has agreed to yet; without any it does not
// ask.
EReplaceAnswer AskToReplace(QWidget* pParent, const std::vector<SReplacedFile>& files);
