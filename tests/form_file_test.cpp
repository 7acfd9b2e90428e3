// Forms saved as files: every kind of value comes back as it went, a broken file gives a clear
// error and never a crash, and a failed save leaves the earlier file as it was.
#include "tessaline/platform/xml/form_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cmath>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <limits>

#include "support.h"
#include "tessaline/platform/font.h"

namespace tessaline {
namespace {

namespace fs = std::filesystem;
using xml::FormControl;
using xml::FormDocument;

class FormFile : public testing::HeadlessTest {
 protected:
  void SetUp() override {
    HeadlessTest::SetUp();
    directory =
        fs::temp_directory_path() /
        ("tessaline-forms-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
         "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(directory);
    fs::create_directories(directory);
  }
  void TearDown() override {
    fs::remove_all(directory);
    HeadlessTest::TearDown();
  }
  void write(const fs::path& path, std::string_view text) {
    std::ofstream(path, std::ios::binary) << text;
  }
  std::string read(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }
  // The error of loading a text as a form: its number and description.
  VbError loadError(std::string_view text) {
    try {
      xml::parseForm(text);
    } catch (const VbError& error) {
      return error;
    }
    ADD_FAILURE() << "loaded: " << text.substr(0, 60);
    return VbError(0);
  }

  fs::path directory;
};

FormDocument oneControl(platform::MemoryPropertyBag bag) {
  FormDocument form;
  form.name = "Pump";
  form.width = 7200;
  form.height = 4800;
  form.controls.push_back({"Tessaline.DTMDataTextBox", "Pressure", 120, 240, 3480, 360, 3, bag});
  return form;
}

TEST_F(FormFile, EveryKindOfValueComesBackAsItWent) {
  auto font = std::make_shared<platform::StdFont>();
  font->Name = "Arial";
  font->Size = 9.75;
  font->Bold = true;
  font->Underline = true;
  font->Charset = 238;
  const std::pair<const char*, Variant> values[] = {
      {"Empty", Variant()},
      {"Null", Variant::null()},
      {"Integer", Variant(int16_t{-32768})},
      {"Long", Variant(int32_t{2147483647})},
      {"Byte", Variant(uint8_t{255})},
      {"Single", Variant(0.1f)},
      {"Double", Variant(0.1 + 0.2)},
      {"Tiny", Variant(5e-324)},
      {"Infinite", Variant(std::numeric_limits<double>::infinity())},
      {"Boolean", Variant(true)},
      {"Day", Variant(DateSerial{25569.0})},
      {"Moment", Variant(DateSerial{44197.270833333336})},
      {"BeforeTheEpoch", Variant(DateSerial{-1.25})},
      {"Spaces", Variant("  two  spaces  ")},
      {"Lines", Variant("first\r\nsecond\ttabbed")},
      {"Markup", Variant("<a href=\"x\">&amp;</a>")},
      {"Unicode", Variant("Grüße 流量 😀")},
      {"Control", Variant(std::string("a\x01"
                                      "b\0c",
                                      5))},
      {"NotUtf8", Variant(std::string("\xff\xfe\x80"))},
      {"Huge", Variant(std::string(1 << 20, 'q'))},
      {"Font", Variant(Ref<platform::StdFont>(font))},
      {"Nothing", Variant::nothing()},
      {"Array", Variant(VariantArray{-2, {Variant(1), Variant("x"), Variant(VariantArray{})}})},
  };
  platform::MemoryPropertyBag bag;
  for (const auto& [name, value] : values) bag.put(name, value);
  const fs::path path = directory / "pump.form.xml";
  xml::saveForm(path, oneControl(bag));
  const FormDocument back = xml::loadForm(path);

  EXPECT_EQ(back.name, "Pump");
  EXPECT_EQ(back.width, 7200);
  ASSERT_EQ(back.controls.size(), 1u);
  const FormControl& control = back.controls[0];
  EXPECT_EQ(control.progId, "Tessaline.DTMDataTextBox");
  EXPECT_EQ(control.name, "Pressure");
  EXPECT_EQ(control.top, 240);
  EXPECT_EQ(control.tabIndex, 3);
  for (const auto& [name, value] : values) {
    const Variant* found = control.properties.find(name);
    ASSERT_NE(found, nullptr) << name;
    if (value.isObject() && !value.toObject()) {
      EXPECT_TRUE(found->isObject() && !found->toObject()) << name;
    } else if (auto expected =
                   value.isObject() ? refCast<platform::StdFont>(value.toObject()) : nullptr) {
      auto actual = refCast<platform::StdFont>(found->toObject());
      ASSERT_TRUE(actual) << name;
      EXPECT_TRUE(actual->sameAs(*expected));
    } else {
      EXPECT_EQ(*found, value) << name << ": " << describe(*found).substr(0, 60);
    }
  }
  // Readable where it can be: a date as a date, a plain text as it stands.
  const std::string text = read(path);
  EXPECT_NE(text.find("value=\"1970-01-01 00:00:00\""), std::string::npos);
  EXPECT_NE(text.find("value=\"  two  spaces  \""), std::string::npos);
  EXPECT_NE(text.find("encoding=\"base64\""), std::string::npos);
}

TEST_F(FormFile, HandEditedValuesAreTakenAsTheyAreWritten) {
  const FormDocument form = xml::parseForm(R"(<?xml version="1.0"?>
    <form name="Edited">
      <control progId="Tessaline.DTMDataLabel" name="L" left=" 10 ">
        <property name="IDtmControl_Enable" type="Boolean" value="false"/>
        <property name="Moment" type="Date" value="2024-02-29 23:59:59"/>
        <property name="Count" type="Long" value="+12"/>
        <property name="Font" type="Font" fontName="Courier New"/>
      </control>
    </form>)");
  const auto& bag = form.controls.at(0).properties;
  EXPECT_EQ(form.controls[0].left, 10);
  EXPECT_EQ(*bag.find("idtmcontrol_enable"), Variant(false));
  EXPECT_NEAR(bag.find("Moment")->toDate().days, 45351.99998842, 1e-8);
  EXPECT_EQ(*bag.find("Count"), Variant(12));
  EXPECT_EQ(refCast<platform::StdFont>(bag.find("Font")->toObject())->Size, 8.25);
}

TEST_F(FormFile, BrokenFilesGiveAClearErrorWithItsLine) {
  const struct {
    const char* text;
    const char* says;
  } broken[] = {
      {"", "empty"},
      {"  \n ", "empty"},
      {"\xef\xbb\xbf<form><control progId=\"x\"></form>", "line 1"},
      {"<form>\n<control progId=\"X\">\n<property name=\"a\" type=\"Long\" value=\"1", "line 3"},
      {"<form>\xff</form>", "not UTF-8"},
      {"<html><body/></html>", "not a saved form"},
      {"{\"form\": 1}", "line 1"},
      {"<form><control name='no class'/></form>", "no progId"},
      {"<form><control progId='P'><property type='Long' value='1'/></control></form>", "no name"},
      {"<form><control progId='P'><property name='a' type='Long' value='x'/></control></form>",
       "is no Long"},
      {"<form><control progId='P'><property name='a' type='Integer' value='40000'/></control>"
       "</form>",
       "is no Integer"},
      {"<form><control progId='P'><property name='a' type='Date' value='2023-02-30'/></control>"
       "</form>",
       "is no Date"},
      {"<form><control progId='P'><property name='a' type='Long'/></control></form>",
       "needs a value"},
      {"<form><control progId='P'><property name='a' type='Blob' value='1'/></control></form>",
       "unknown type"},
      {"<form><control progId='P'><property name='a' type='Font' size='-3'/></control></form>",
       "no font size"},
      {"<form width='9999999999'/>", "no whole number"},
  };
  for (const auto& file : broken) {
    const VbError error = loadError(file.text);
    EXPECT_EQ(error.number(), err::FileLoadError) << file.text;
    EXPECT_NE(error.description().find(file.says), std::string::npos)
        << file.text << " -> " << error.description();
  }
  std::string deep = "<form><control progId='P'><property name='a' type='Array'>";
  for (int i = 0; i < 5000; ++i) deep += "<item type='Array'>";
  EXPECT_EQ(loadError(deep).number(), err::FileLoadError) << "unclosed and deep";
  std::string nested = "<form><control progId='P'><property name='a' type='Array'>";
  for (int i = 0; i < 100; ++i) nested += "<item type='Array'>";
  for (int i = 0; i < 100; ++i) nested += "</item>";
  nested += "</property></control></form>";
  EXPECT_NE(loadError(nested).description().find("too deep"), std::string::npos);
}

TEST_F(FormFile, MissingFileRaisesFileNotFound) {
  EXPECT_EQ(testing::errorOf([&] { xml::loadForm(directory / "none.xml"); }), err::FileNotFound);
  EXPECT_EQ(testing::errorOf([&] { xml::loadForm(directory); }), err::FileNotFound);
}

TEST_F(FormFile, AFailedSaveLeavesTheEarlierFileAsItWas) {
  const fs::path path = directory / "pump.form.xml";
  platform::MemoryPropertyBag bag;
  bag.put("IDTMDataControl_Value", Variant("first"));
  xml::saveForm(path, oneControl(bag));
  const std::string before = read(path);
  // A disk that takes no more than a few bytes: the write of the new text fails part way.
  bag.put("IDTMDataControl_Value", Variant(std::string(100000, 'x')));
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit small{64, limit.rlim_max};
  const auto signal = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const int number = testing::errorOf([&] { xml::saveForm(path, oneControl(bag)); });
  ::setrlimit(RLIMIT_FSIZE, &limit);
  std::signal(SIGXFSZ, signal);
  EXPECT_EQ(number, err::PathFileAccess);
  EXPECT_EQ(read(path), before);
  // Nothing of the failed save is left beside the form.
  EXPECT_EQ(std::distance(fs::directory_iterator(directory), fs::directory_iterator()), 1);
  EXPECT_EQ(testing::errorOf([&] { xml::saveForm(directory / "no" / "such" / "dir.xml", {}); }),
            err::PathFileAccess);
}

}  // namespace
}  // namespace tessaline
