#pragma once

namespace quillmere {

class Commands;

// Icons for the items of the menus where they help: those of the desktop's icon theme, and drawn ones where
// it has none. A theme's icons suit the desktop's own colours only; `own` draws all.
void showMenuIcons(Commands &menu, bool own);

} // namespace quillmere
