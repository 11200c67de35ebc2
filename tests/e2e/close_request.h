#pragma once

/// Asks the window manager to close a window, as a click on its system button or a pager does. In a
/// file of its own, since the names of Xlib do not go with those of Qt.
/// \param window  id of the window on the X server
/// \return        false if the server cannot be reached
bool sendCloseRequest(unsigned long window);
