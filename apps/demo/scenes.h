#pragma once

#include <string>

#include "apps/demo/transcript.h"

// The scenes that tessaline-demo plays on the headless backend.
namespace tessaline::demo {

// The Overview's edit: a device value, a user's edit, the host's check, the modified mark.
void playOneEdit(Transcript& t);

}  // namespace tessaline::demo
