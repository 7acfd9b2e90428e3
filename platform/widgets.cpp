#include "platform/widgets.h"

namespace tessaline::platform {

namespace {
std::shared_ptr<Backend>& installed() {
  thread_local std::shared_ptr<Backend> toolkit;
  return toolkit;
}
}  // namespace

Backend& backend() {
  auto& toolkit = installed();
  if (!toolkit) {
    throw VbError(err::Failed, "No platform backend is installed on this thread");
  }
  return *toolkit;
}

void setBackend(std::shared_ptr<Backend> toolkit) { installed() = std::move(toolkit); }

bool hasBackend() { return static_cast<bool>(installed()); }

}  // namespace tessaline::platform
