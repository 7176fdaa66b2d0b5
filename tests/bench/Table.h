#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace krx::bench {

inline std::string Decimal(double value, int digits = 2) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", digits, value);
  return text;
}

// A table for the terminal that is one in a document, too. The first column holds names.
class Table {
 public:
  using Row = std::vector<std::string>;

  explicit Table(Row titles) : rows_{std::move(titles)} {}

  void Add(Row row) { rows_.push_back(std::move(row)); }

  void Print() const {
    std::printf("\n");
    PrintRow(rows_.front());
    for (std::size_t i = 0; i < rows_.front().size(); ++i)
      std::printf("|%s", i == 0 ? "---" : "---:");
    std::printf("|\n");
    for (std::size_t i = 1; i < rows_.size(); ++i)
      PrintRow(rows_[i]);
    std::printf("\n");
    std::fflush(stdout);
  }

 private:
  void PrintRow(const Row& row) const {
    for (std::size_t i = 0; i < row.size(); ++i)
      std::printf(i == 0 ? "| %-*s " : "| %*s ", Width(i), row[i].c_str());
    std::printf("|\n");
  }
  int Width(std::size_t column) const {
    std::size_t widest = 0;
    for (const Row& row : rows_)
      if (column < row.size()) widest = std::max(widest, row[column].size());
    return static_cast<int>(widest);
  }

  std::vector<Row> rows_;
};

}  // namespace krx::bench
