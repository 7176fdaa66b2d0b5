#include "documents/Markdown.h"

#include <algorithm>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace krx::tests {

namespace {

namespace fs = std::filesystem;

std::string Trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::string Without(const std::string& text, const char* pattern) {
  return std::regex_replace(text, std::regex(pattern), "");
}

// A heading without its marks of code and links.
std::string Shown(const std::string& heading) {
  const std::string linked = R"(\[([^\]]*)\]\([^)]*\))";
  return Without(std::regex_replace(heading, std::regex(linked), "$1"), "`");
}

// How a place is named after its heading: small letters, blanks as hyphens, no other signs.
std::string AnchorOf(const std::string& heading) {
  static const std::map<std::string, std::string> kSmall{
      {"\u00C4", "\u00E4"}, {"\u00D6", "\u00F6"}, {"\u00DC", "\u00FC"}};
  std::string small = heading;
  for (const auto& [large, letter] : kSmall)
    for (auto at = small.find(large); at != std::string::npos; at = small.find(large))
      small.replace(at, large.size(), letter);
  std::string anchor;
  for (const char sign : small) {
    const auto byte = static_cast<unsigned char>(sign);
    if (byte >= 0x80 || std::isalnum(byte) || sign == '-' || sign == '_')
      anchor += static_cast<char>(byte < 0x80 ? std::tolower(byte) : byte);
    else if (sign == ' ')
      anchor += '-';
  }
  return anchor;
}

// The level of a heading, 0 for any other line.
std::size_t Level(const std::string& line) {
  const auto marks = line.find_first_not_of('#');
  return marks != std::string::npos && marks > 0 && line[marks] == ' ' ? marks : 0;
}

}  // namespace

Markdown::Markdown(std::string text) : text_(std::move(text)) {
  std::istringstream stream(text_);
  bool code = false;
  for (std::string line; std::getline(stream, line);) {
    const bool fence = Trimmed(line).starts_with("```");
    lines_.push_back({line, code || fence});
    if (fence) code = !code;
  }
}

Markdown Markdown::Read(const fs::path& file) {
  return Markdown(ReadText(file));
}

std::string Markdown::Title() const {
  for (const Line& line : lines_)
    if (!line.InCode && Level(line.Text) == 1) return Shown(line.Text.substr(2));
  return {};
}

std::vector<std::string> Markdown::Anchors() const {
  std::vector<std::string> anchors;
  std::map<std::string, int> taken;
  for (const Line& line : lines_) {
    const std::size_t level = line.InCode ? 0 : Level(line.Text);
    if (!level) continue;
    const std::string name = AnchorOf(Shown(Trimmed(line.Text.substr(level))));
    const int before = taken[name]++;
    anchors.push_back(before ? name + "-" + std::to_string(before) : name);
  }
  return anchors;
}

std::vector<std::string> Markdown::Links() const {
  std::string text;
  for (const Line& line : lines_)
    if (!line.InCode && !line.Text.starts_with("    ")) text += line.Text + '\n';
  text = Without(text, "`[^`]*`");
  const std::regex link(R"(\]\(([^()\s]+)\))");
  std::vector<std::string> targets;
  for (std::sregex_iterator it(text.begin(), text.end(), link), end; it != end; ++it)
    targets.push_back((*it)[1]);
  return targets;
}

std::string Markdown::Section(const std::string& heading) const {
  std::string section;
  bool inside = false;
  for (const Line& line : lines_) {
    const std::size_t level = line.InCode ? 0 : Level(line.Text);
    if (level && level <= 2)
      inside = line.Text == "## " + heading;
    else if (inside)
      section += line.Text + '\n';
  }
  return section;
}

std::vector<std::string> Markdown::Code(const std::string& language) const {
  std::vector<std::string> blocks;
  bool inside = false;
  for (const Line& line : lines_) {
    if (Trimmed(line.Text).starts_with("```")) {
      inside = !inside && Trimmed(line.Text) == "```" + language;
      if (inside) blocks.emplace_back();
    } else if (inside) {
      blocks.back() += line.Text + '\n';
    }
  }
  return blocks;
}

std::vector<std::vector<std::string>> TableRows(const std::string& text) {
  std::vector<std::vector<std::string>> rows;
  std::istringstream stream(text);
  bool titles = true;
  for (std::string line; std::getline(stream, line);) {
    if (!line.starts_with("|")) {
      titles = true;
    } else if (line.starts_with("|--")) {
      titles = false;
    } else if (!titles) {
      std::istringstream cells(Without(line.substr(1), "`"));
      rows.emplace_back();
      for (std::string cell; std::getline(cells, cell, '|');)
        rows.back().push_back(Trimmed(cell));
    }
  }
  return rows;
}

std::vector<std::string> MarkdownFiles(const fs::path& root) {
  std::vector<std::string> files;
  for (fs::recursive_directory_iterator it(root), end; it != end; ++it) {
    const std::string name = it->path().filename().string();
    if (it->is_directory() && (name == "build" || name == "dist" || name.starts_with(".")))
      it.disable_recursion_pending();
    else if (it->path().extension() == ".md")
      files.push_back(it->path().lexically_relative(root).generic_string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string ReadText(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error(file.string() + " cannot be read");
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace krx::tests
