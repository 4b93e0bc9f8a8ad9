#pragma once

// Whoever sends the events of a drag and has more to do at its end than the release, as images of
// the stroke or further parts of one step. Borrowed by CHostInput for one drag.
class IDragOwner
{
public:
    virtual ~IDragOwner() = default;

    // Somebody else has ended the drag, and its release was sent: another view was pressed, the
    // level goes away, the history moves. bMaySend: false while a plug-in is in the middle of
    // something that bears no drag. Not called for a drag that was dropped for want of memory.
    virtual void OnDragEnded(bool bMaySend) = 0;
};
