#pragma once

#include "json/Value.h"

namespace seedmote {

// The fields that the two torrent queries ask for, in the order in which they are sent; named by the
// daemon's RPC description. Arrays of texts, made once and shared.
const json::Value& torrentListFields();
const json::Value& torrentDetailFields();

}  // namespace seedmote
