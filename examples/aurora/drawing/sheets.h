// The sheets of the theme, one routine a kind.
#pragma once

#include "canvas.h"

namespace aurora {

// The night sky with its curtains of light. Strength 1 is a picture to look at, 0.5 one to read text on.
QImage sky(int width, int height, double strength);

void drawBackgrounds(Folder &out);
void drawScenes(Folder &out);
void drawGlass(Folder &out);
void drawIcons(Folder &out);
void drawMarks(Folder &out);

// A lake under the sky; also what stands in for live video.
QImage lake(int width, int height);

} // namespace aurora
