#pragma once

namespace seedmote {

// A Wayland session without a seat (nobody can touch or type, as in one without a screen) has no input
// methods either, and Qt 6.4 crashes when a text asks for them: lets Qt do without. Before the application
// object is made; does nothing in other sessions.
void prepareForMissingSeat();

}  // namespace seedmote
