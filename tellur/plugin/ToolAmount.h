#pragma once

class CTellurBrush;

// The one number that says what the function of a brush does: the height that it adds or sets,
// levels, the half width of what is averaged.

// No number for a function that has none.
float GetAmountOf(const CTellurBrush& brush);
// Within the terrain's height limit, or 1 to 1000 for a whole number; nothing for a function that
// has none.
void SetAmountOf(CTellurBrush& brush, float fValue);

// Whether the ground at the press gives the number anew. Whoever gives one switches that off, since
// the number would be gone with the next press.
bool PicksHeight(const CTellurBrush& brush);
void SetPicksHeight(CTellurBrush& brush, bool bPicks); // nothing for a function that cannot
