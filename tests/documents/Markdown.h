#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace krx::tests {

// A page of the documents as its readers on the web have it: links, places, sections, tables,
// examples.
class Markdown {
 public:
  explicit Markdown(std::string text);
  // Throws when there is no such file.
  static Markdown Read(const std::filesystem::path& file);

  // The text of the first heading of the highest level.
  std::string Title() const;
  // Names of the places that links lead to, one for each heading.
  std::vector<std::string> Anchors() const;
  // Targets of links and pictures; what stands in code is none.
  std::vector<std::string> Links() const;
  // The text below a heading of the second level, up to the next one; empty without such a heading.
  std::string Section(const std::string& heading) const;
  // Code blocks of a language, each as it stands.
  std::vector<std::string> Code(const std::string& language) const;

 private:
  struct Line {
    std::string Text;
    bool InCode;
  };

  std::string text_;
  std::vector<Line> lines_;
};

// Cells of the rows of all tables in a text, without the rows of titles and dashes; marks of code
// are left out.
std::vector<std::vector<std::string>> TableRows(const std::string& text);

// All Markdown files below the root of the checkout, by their paths from there; none of what is
// built.
std::vector<std::string> MarkdownFiles(const std::filesystem::path& root);

std::string ReadText(const std::filesystem::path& file);

}  // namespace krx::tests
