// The pictures of the tree, the lists, the toolbar and the dialogs, by their image keys.
#pragma once

#include <QIcon>

#include <string_view>

namespace tollwick {

// Drawn from an SVG picture at the size that is asked for, in a tone that reads on the desktop's
// colours. An unknown key gives an empty icon.
QIcon imageIcon(std::string_view image_key);

} // namespace tollwick
