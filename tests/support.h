#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tessaline/frame/logger.h"
#include "tessaline/host/reference_host.h"
#include "tessaline/platform/chart/install.h"
#include "tessaline/platform/headless/headless.h"
#include "tessaline/platform/picture.h"
#include "tessaline/platform/regexp/pcre2_regexp.h"
#include "tessaline/platform/xml/pugi_dom.h"

namespace tessaline::testing {

// A fresh headless backend and a recording host for each test. A test that expects an error
// to escape a user's action takes it with unhandled(); any left over fails the test.
class HeadlessTest : public ::testing::Test {
 protected:
  void SetUp() override {
    headless::install(".");
    regexp::install();
    chart::install();
    SetSharedHost(nullptr);
    clearCurrentError();
    host = std::make_shared<host::ReferenceHost>();
  }

  void TearDown() override {
    for (const VbError& error : headless::current().takeUnhandledErrors()) {
      ADD_FAILURE() << "unexpected unhandled error: " << error.what();
    }
    SetSharedHost(nullptr);
    platform::setBackend(nullptr);
    setLocale(nullptr);
    platform::setRegExpEngine(nullptr);
    platform::chart::setChartEngine(nullptr);
    platform::setPictureDecoder(nullptr);
  }

  std::vector<VbError> unhandled() { return headless::current().takeUnhandledErrors(); }

  // The operations of the host's calls so far, in order.
  std::vector<std::string> operations() const {
    std::vector<std::string> names;
    for (const auto& call : host->calls()) names.push_back(call.operation);
    return names;
  }

  std::shared_ptr<host::ReferenceHost> host;
};

inline Ref<platform::XmlNode> element(std::string_view xml) { return xml::parseElement(xml); }

// The number of the error that an action raises; 0 when it raises none.
inline int errorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const VbError& e) {
    return e.number();
  }
  return 0;
}

}  // namespace tessaline::testing
