// The picture: composes and presents one frame.
#pragma once

// Draws everything anew on white - images, then texts, then units, then the selection box - and
// waits for the display to show it. After closeEngine it only waits, about as long as a frame
// takes, and so for a window on Wayland that nobody sees. Main thread only.
void drawFrame();

// The first half of drawFrame: composes the frame in the renderer's target and does not present it.
// Main thread, while the renderer lives.
void composeFrame();
