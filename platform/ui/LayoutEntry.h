#pragma once

#include <QPointer>
#include <string_view>
#include <utility>

#include "platform/core/MainThread.h"
#include "platform/core/Services.h"

namespace seedmote::platform {

// How a layout file's events come to a controller: later, through the main thread's gate, and not at all when
// the object is gone by then. `where` names the entry in the log. Main thread.
template <class Object, class Step>
void enterFromLayout(Object* object, std::string_view where, Step step) {
  services().main.enter(
      where,
      [object = QPointer<Object>(object), step = std::move(step)]() mutable {
        if (object) {
          step(*object);
        }
      },
      MainThread::From::layout);
}

// The same for what a person presses: dropped while something in front takes all touches, for an
// accessibility action comes past it.
template <class Object, class Step>
void pressFromLayout(Object* object, std::string_view where, Step step) {
  if (!services().main.swallowsInput()) {
    enterFromLayout(object, where, std::move(step));
  }
}

}  // namespace seedmote::platform
