// A text box of Tessaline on the shared library's headless backend, built with pkg-config alone:
//   c++ -std=c++20 main.cpp $(pkg-config --cflags --libs tessaline)
// It shows a value and says whether the box shows it.
#include <tessaline/entry/data_text_box.h>
#include <tessaline/platform/headless/headless.h>

#include <iostream>

int main() {
  using namespace tessaline;
  headless::install();
  auto box = DTMDataTextBox::create();
  box->IDTMDataControl_Value(Variant("42.5"));
  const std::string shown = box->Text1().Text();
  std::cout << "the box shows " << shown << "\n";
  return shown == "42.5" ? 0 : 1;
}
