#include "tessaline/validation/validators.h"

#include <gtest/gtest.h>

#include "support.h"

namespace tessaline {
namespace {

using testing::errorOf;

Ref<platform::XmlNode> validators(const std::string& rules) {
  return testing::element("<validators>" + rules + "</validators>");
}

// A fresh validator of the kind, with the type name "int16", which plays no part.
template <class V>
bool check(const std::string& rules, const Variant& value) {
  V validator;
  if constexpr (std::is_same_v<V, LengthValidator>) {
    return validator.Validate(validators(rules), value);
  } else {
    const bool passes = validator.Validate(validators(rules), "int16", value);
    EXPECT_EQ(validator.dataTypeController().DataType(), Variant("int16"));
    return passes;
  }
}

struct Case {
  std::string rules;
  Variant value;
  bool passes;
};

TEST(RangeValidation, ComparesTextAsMatchTypeWithoutATypeGivesIt) {
  const Case cases[] = {
      {R"(<rangeValidation min="2" max="5"/>)", "2", true},
      {R"(<rangeValidation min="2" max="5"/>)", "5", true},
      {R"(<rangeValidation min="2" max="5"/>)", "6", false},
      {R"(<rangeValidation min="2" max="5"/>)", 2.5, true},
      {R"(<rangeValidation min="1" max="10"/>)", int16_t{5}, false},  // "5" lies above "10"
      {R"(<rangeValidation min="9" max="10"/>)", "9", false},         // reversed as text
      {R"(<rangeValidation min="5" max="2"/>)", "3", false},
      {R"(<rangeValidation min="" max=""/>)", "-1", true},  // both limits stay -1
      {R"(<rangeValidation min="" max=""/>)", "0", false},
      {R"(<rangeValidation min="a" max="b"/><rangeValidation min="x" max="z"/>)", "y", true},
      {R"(<rangeValidation min="x" max="z"/><rangeValidation min="a" max="b"/>)", "y", false},
  };
  for (const Case& c : cases)
    EXPECT_EQ(check<RangeValidator>(c.rules, c.value), c.passes) << c.rules;
}

TEST(LengthValidation, CountsCharactersOfTheTextAgainstNumericLimits) {
  const Case cases[] = {
      {R"(<lengthValidation min="2" max="4"/>)", "abcd", true},
      {R"(<lengthValidation min="2" max="4"/>)", "abcde", false},
      {R"(<lengthValidation min="2" max="4"/>)", int32_t{12345}, false},
      {R"(<lengthValidation min="2" max="4"/>)", "a", false},
      {R"(<lengthValidation min="" max="4"/>)", "", true},
      {R"(<lengthValidation max="4"/>)", "", true},
      {R"(<lengthValidation max="10"/>)", "abcdefghi", true},  // numbers, not "9" above "10"
      {R"(<lengthValidation min="3" max="3"/>)", "äöü", true},
      {R"(<lengthValidation min="2.5" max="4"/>)", "ab", false},
      {R"(<lengthValidation min="0" max=""/>)", "", false},  // an empty max stays -1
  };
  for (const Case& c : cases)
    EXPECT_EQ(check<LengthValidator>(c.rules, c.value), c.passes) << c.rules;
}

TEST(DiscreteValidation, TheLastMatchAttributeDecides) {
  const Case cases[] = {
      {R"(<discreteValidation MATCH1="1" MATCH2="2"/>)", "2", true},
      {R"(<discreteValidation MATCH1="1" MATCH2="2"/>)", "1", false},
      {R"(<discreteValidation match_a="1" Matches="2"/>)", int32_t{2}, true},
      {R"(<discreteValidation MATCH="2" MATC="1" xMATCH="1" errorString="1"/>)", 2.0, true},
      {R"(<discreteValidation MATCH="2"/>)", "02", false},
      {R"(<discreteValidation MATCH="2"/><discreteValidation/>)", "3", false},
      {R"(<discreteValidation errorString="e"/>)", "3", true},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(check<DiscreteValidator>(c.rules, c.value), c.passes) << c.rules;
  }
}

TEST(Validators, TheErrorTextIsTheLastOneReadWhetherItsCheckFailedOrNot) {
  RangeValidator validator;
  const std::string failing = R"(<rangeValidation min="a" max="b" errorString="first"/>)";
  validator.Validate(validators(failing + R"(<rangeValidation min="x" max="z"/>)"), "", "y");
  EXPECT_EQ(validator.ErrorString(), "first");
  validator.Validate(validators(failing + R"(<rangeValidation min="x" max="z" errorString=""/>)"),
                     "", "y");
  EXPECT_EQ(validator.ErrorString(), "");
}

TEST(Validators, WrongNodesAndOtherKindsPassWithoutText) {
  const Ref<platform::XmlNode> cases[] = {
      nullptr,
      testing::element(R"(<validator><rangeValidation min="a" max="b"/></validator>)"),
      testing::element(R"(<e validators="x"/>)")->attributes()->getNamedItem("validators"),
      validators(""),
      validators(R"(<!-- c --><other min="a" max="b" MATCH="q" errorString="no"/>)"),
  };
  for (const Ref<platform::XmlNode>& node : cases) {
    RangeValidator range;
    LengthValidator length;
    DiscreteValidator discrete;
    EXPECT_TRUE(range.Validate(node, "", "z"));
    EXPECT_TRUE(length.Validate(node, "zzzzzz"));
    EXPECT_TRUE(discrete.Validate(node, "", "z"));
    EXPECT_EQ(range.ErrorString() + length.ErrorString() + discrete.ErrorString(), "");
  }
  EXPECT_TRUE(check<LengthValidator>(
      R"(<rangeValidation min="a" max="b"/><discreteValidation MATCH="q"/>)", "z"));
}

TEST(Validators, BrokenDefinitionsAndValuesRaiseToTheCaller) {
  const Variant null = Variant::null();
  const struct {
    std::function<bool()> validate;
    int32_t error;
  } cases[] = {
      {[] { return check<RangeValidator>(R"(<rangeValidation max="5"/>)", "3"); }, 91},
      {[] { return check<RangeValidator>(R"(<rangeValidation min="1"/>)", "3"); }, 91},
      {[] { return check<LengthValidator>(R"(<lengthValidation min="1"/>)", "3"); }, 91},
      {[] { return check<LengthValidator>(R"(<lengthValidation min="abc" max="4"/>)", "3"); }, 13},
      {[] { return check<LengthValidator>(R"(<lengthValidation max="x"/>)", "3"); }, 13},
      {[&] { return check<RangeValidator>(R"(<rangeValidation min="1" max="4"/>)", null); }, 94},
      {[&] { return check<LengthValidator>(R"(<lengthValidation max="4"/>)", null); }, 94},
      {[&] { return check<DiscreteValidator>(R"(<discreteValidation MATCH="1"/>)", null); }, 94},
      // No MATCH attribute: nothing is compared, so nothing is converted.
      {[&] { return check<DiscreteValidator>("<discreteValidation/>", null); }, 0},
  };
  for (size_t i = 0; i < std::size(cases); ++i) {
    EXPECT_EQ(errorOf([&] { cases[i].validate(); }), cases[i].error) << "case " << i;
  }
}

TEST(DiscreteValidation, WalksAHundredThousandMatchAttributes) {
  std::string xml = "<validators><discreteValidation";
  for (int i = 0; i < 100000; ++i) {
    xml += " MATCH" + std::to_string(i) + "='" + std::to_string(i) + "'";
  }
  const auto root = testing::element(xml + "/></validators>");
  DiscreteValidator validator;
  EXPECT_TRUE(validator.Validate(root, "", "99999"));
  EXPECT_FALSE(validator.Validate(root, "", "0"));
}

TEST(Validators, AnswerByName) {
  auto validator = std::make_shared<LengthValidator>();
  const Variant node(validators(R"(<lengthValidation max="2" errorString="long"/>)"));
  EXPECT_EQ(validator->call("Validate", {node, "abc"}), Variant(false));
  EXPECT_EQ(validator->get("ErrorString"), Variant("long"));
  EXPECT_EQ(std::make_shared<DiscreteValidator>()->call("Validate", {Variant(), "", 1}),
            Variant(true));
}

}  // namespace
}  // namespace tessaline
