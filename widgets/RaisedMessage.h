#pragma once

namespace seedmote::platform {
class MainThread;
}

namespace seedmote {

// Whatever an entry or a background thread raises must not leave a message standing for ever: from now on
// the overlay, if it is up, then ends with an error that a person understands.
void showWhatIsRaised(platform::MainThread& main);

}  // namespace seedmote
