// Writes down which changes each test reaches, into the file that the environment's KRX_RECORD
// names: one line for each test with its name, its milliseconds of the processor, and for each file
// its name and the numbers; first what is reached before any test.
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "mutants/Switches.h"

namespace krx::mutants {

namespace {

class Recorder : public testing::EmptyTestEventListener {
 public:
  explicit Recorder(const char* file) : out_(file) {}

  void OnTestProgramStart(const testing::UnitTest& program) override {
    static_cast<void>(program);
    Write("");
  }

  void OnTestEnd(const testing::TestInfo& test) override {
    Write(std::string(test.test_suite_name()) + '.' + test.name());
  }

 private:
  void Write(const std::string& test) {
    const std::clock_t now = std::clock();
    out_ << test << '\t' << (now - before_) * 1000 / CLOCKS_PER_SEC;
    for (const File* file = Files(); file; file = file->Next)
      WriteReached(*file);
    out_ << '\n' << std::flush;
    before_ = std::clock();
  }

  void WriteReached(const File& file) {
    bool named = false;
    for (int i = 0; i < file.Count; ++i) {
      if (!file.Reached[i]) continue;
      if (!named) out_ << '\t' << file.Name;
      named = true;
      out_ << ' ' << i;
      file.Reached[i] = false;
    }
  }

  std::ofstream out_;
  std::clock_t before_ = 0;
};

const bool listening = [] {
  const char* const file = std::getenv("KRX_RECORD");
  if (file) testing::UnitTest::GetInstance()->listeners().Append(new Recorder(file));
  return file != nullptr;
}();

}  // namespace

const File*& Files() {
  static const File* last = nullptr;
  return last;
}

File::File(const char* name, int count, bool* reached, int* chosen)
    : Name(name), Count(count), Reached(reached), Next(Files()) {
  Files() = this;
  const char* const wanted = std::getenv("KRX_MUTANT");
  const std::size_t length = std::strlen(name);
  if (wanted && std::strncmp(wanted, name, length) == 0 && wanted[length] == ':')
    *chosen = std::atoi(wanted + length + 1);
}

}  // namespace krx::mutants
