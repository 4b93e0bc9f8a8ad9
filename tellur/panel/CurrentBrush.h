#pragma once

class CTellurBrush;

// The plug-in's current brush, which every edit in the panel goes to. Borrowed for the call of a
// handler; null when there is none.
CTellurBrush* GetCurrentBrush();

// Lets the views draw the brush as it is now.
void ShowBrush();
