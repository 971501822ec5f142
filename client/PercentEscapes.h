#pragma once

#include <string>
#include <string_view>

namespace seedmote {

// `text` (UTF-8) with everything that may not stand in a URL escaped, "#" included: a link's text rarely
// means a fragment by it, and would lose what follows. Escapes that are in it already stay, and so do the
// characters that divide a URL's parts. Any thread.
std::string addingPercentEscapes(std::string_view text);

}  // namespace seedmote
