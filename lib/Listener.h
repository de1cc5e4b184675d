#pragma once

namespace ZQV {

/** Abstract receiver of events. */
class Listener {
 public:
  Listener() = default;
  Listener(const Listener&) = default;
  Listener& operator=(const Listener&) = default;
  virtual ~Listener() = default;
  /** @param name    type of the event, such as "Redraw"
   *  @param data    its text, such as "640:480"
   *  @param source  what the receiver asked to be told with it */
  virtual void callback(const char* name, const char* data, const void* source) = 0;
};

}  // namespace ZQV
