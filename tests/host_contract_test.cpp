#include <gtest/gtest.h>

#include "tessaline/frame/interfaces.h"
#include "tessaline/frame/logger.h"
#include "tessaline/host/reference_host.h"

namespace tessaline {
namespace {

using host::HostCall;
using host::ReferenceHost;

class HostContract : public ::testing::Test {
 protected:
  void SetUp() override {
    SetSharedHost(nullptr);
    clearCurrentError();
  }
  void TearDown() override { SetSharedHost(nullptr); }
  std::shared_ptr<ReferenceHost> host = std::make_shared<ReferenceHost>();
};

TEST_F(HostContract, LoggerBeforeInitDropsEveryLine) {
  Logger logger;
  EXPECT_EQ(logger.DebugL("a"), Variant());
  logger.Info("b");
  logger.Error("c");
  logger.Fatel("d");
  EXPECT_TRUE(host->calls().empty());
}

TEST_F(HostContract, LoggerHandsNameAndTextToTheHostOperationOfItsLevel) {
  Ref<Logger> logger = MakeLogger(host, "DTMDataTextBox");
  logger->DebugL("one");
  logger->Info("two");
  logger->Error("three");
  logger->Fatel("four");
  const std::vector<HostCall> expected = {{"LogDebug", {"DTMDataTextBox", "one"}},
                                          {"LogInfo", {"DTMDataTextBox", "two"}},
                                          {"LogError", {"DTMDataTextBox", "three"}},
                                          {"LogFatal", {"DTMDataTextBox", "four"}}};
  EXPECT_EQ(host->calls(), expected);
}

TEST_F(HostContract, LocalizeTextAsksOnlyWithAKeyAndAHost) {
  EXPECT_EQ(LocalizeText("x"), "x");
  SetSharedHost(host);
  host->translations["x"] = "Ex";
  EXPECT_EQ(LocalizeText(""), "");
  EXPECT_TRUE(host->calls().empty());
  EXPECT_EQ(LocalizeText("x"), "Ex");
  EXPECT_EQ(LocalizeText("unknown"), "unknown");
  EXPECT_EQ(host->calls().size(), 2u);
}

TEST_F(HostContract, TheLastSharedHostWins) {
  auto second = std::make_shared<ReferenceHost>();
  second->translations["k"] = "second";
  SetSharedHost(host);
  SetSharedHost(second);
  EXPECT_EQ(LocalizeText("k"), "second");
  EXPECT_TRUE(host->calls().empty());
}

TEST_F(HostContract, AFailingHostTravelsToTheCallerOfTheLine) {
  struct FailingHost : ReferenceHost {
    std::string GetLocalizedString(const std::string&) override { throw VbError(440); }
  };
  SetSharedHost(std::make_shared<FailingHost>());
  EXPECT_THROW(LocalizeText("k"), VbError);
}

TEST_F(HostContract, GuardedMemberWritesOneLineAndReturnsNormally) {
  Ref<Logger> logger = MakeLogger(host, "DTMDataTextBox");
  int reached = 0;
  guarded(*logger, "Error on IDTMDataControl_Value", [&] {
    reached = 1;
    Variant::null().toText();
    reached = 2;
  });
  EXPECT_EQ(reached, 1);
  EXPECT_EQ(host->errorLines(),
            std::vector<std::string>{"Error on IDTMDataControl_Value94 ,Description = Invalid "
                                     "use of Null"});
  EXPECT_EQ(currentError().number, 94);
}

TEST_F(HostContract, TooltipLinesSeparateNumberAndDescriptionWithAColon) {
  Ref<Logger> logger = MakeLogger(host, "DTMDataTextBox");
  guarded(
      *logger, "Error in CreateTooltip of DtmTextBox ", [] { throw VbError(91); },
      ErrorLineStyle::Tooltip);
  EXPECT_EQ(host->errorLines().at(0),
            "Error in CreateTooltip of DtmTextBox 91:Object variable or With block variable "
            "not set");
}

TEST_F(HostContract, GuardedMemberTurnsForeignFailuresIntoErrors) {
  Ref<Logger> logger = MakeLogger(host, "X");
  guarded(*logger, "Error on X", [] { throw std::runtime_error("boom"); });
  guarded(*logger, "Error on X", [] { throw std::bad_alloc(); });
  EXPECT_EQ(host->errorLines(),
            (std::vector<std::string>{"Error on X51 ,Description = boom",
                                      "Error on X7 ,Description = Out of memory"}));
}

TEST_F(HostContract, AMemberCalledThroughNothingRaises91) {
  Ref<GenericDtm> nothing;
  try {
    nothing->BaseFolder();
    FAIL() << "no error";
  } catch (const VbError& e) {
    EXPECT_EQ(e.number(), 91);
    EXPECT_EQ(e.description(), "Object variable or With block variable not set");
  }
}

TEST_F(HostContract, QueryInterfaceAnswersTheHostInterfacesByIdentifier) {
  const Ref<Object> object = host;
  EXPECT_TRUE(queryInterface(object, "24808C8A-7C12-4B34-BD35-49E51166386A"));
  EXPECT_TRUE(queryInterface(object, "{08d9202c-2433-469d-95a9-329f02f9c621}"));
  EXPECT_FALSE(queryInterface(object, IDtmControl::kIid));
  EXPECT_FALSE(queryInterface(object, "not-an-identifier"));
  EXPECT_FALSE(queryInterface(Ref<Object>(), GenericDtm::kIid));
}

TEST(ErrorTexts, AreTheStandardOnes) {
  EXPECT_EQ(VbError(6).description(), "Overflow");
  EXPECT_EQ(VbError(9).description(), "Subscript out of range");
  EXPECT_EQ(VbError(13).description(), "Type mismatch");
  EXPECT_EQ(VbError(457).description(),
            "This key is already associated with an element of this collection");
  EXPECT_EQ(VbError(5017).description(), "Syntax error in regular expression");
  EXPECT_EQ(VbError(12345).description(), "");
}

}  // namespace
}  // namespace tessaline
