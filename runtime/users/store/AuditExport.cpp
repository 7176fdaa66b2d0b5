#include "runtime/users/store/AuditExport.h"

#include "runtime/core/FieldText.h"

namespace krx::runtime {
namespace {

constexpr int kExported = 500;  // records that are read at once

struct Field {
  const char* Name;
  const String& Text;
};

std::vector<Field> TextsOf(const AuditRecord& record) {
  return {{"actor", record.Entry.Actor},      {"action", record.Entry.Action},
          {"subject", record.Entry.Subject},  {"outcome", record.Entry.Outcome},
          {"station", record.Origin.Station}, {"process", record.Origin.Process},
          {"account", record.Origin.Account}};
}

// Backslashes stay as they are: accounts are full of them.
std::string CsvField(StringView text) {
  std::string field = EscapedField(text);
  const std::string_view backslash = "\\u005c";
  for (std::size_t at = 0; (at = field.find(backslash, at)) != std::string::npos; ++at)
    field.erase(at + 1, backslash.size() - 1);
  std::string quoted;
  const bool quotes = field.find_first_of(",\"") != std::string::npos;
  if (quotes) quoted += '"';
  if (!field.empty() && std::string_view("=+-@").find(field[0]) != std::string_view::npos)
    quoted += '\'';
  for (const char byte : field) {
    if (byte == '"') quoted += byte;
    quoted += byte;
  }
  if (quotes) quoted += '"';
  return quoted;
}

// Control characters and separators of lines become escapes, which JSON writes the same way.
std::string JsonText(StringView text) {
  std::string quoted = "\"";
  for (const char16_t unit : text) {
    if (unit == u'"') {
      quoted += "\\\"";
    } else if (unit == u'\\') {
      quoted += "\\\\";
    } else if (unit >= 0xD800 && unit <= 0xDFFF) {
      constexpr char kDigits[] = "0123456789abcdef";
      quoted += "\\u";
      for (int shift = 12; shift >= 0; shift -= 4)
        quoted += kDigits[(unit >> shift) & 0xF];
    } else {
      quoted += EscapedField(StringView(&unit, 1));
    }
  }
  quoted += '"';
  return quoted;
}

std::string CsvLine(const AuditRecord& record) {
  std::string line = std::to_string(record.Number);
  line.append(",").append(TimeStamp(record.At));
  for (const Field& field : TextsOf(record))
    line.append(",").append(CsvField(field.Text));
  return line.append(",").append(ToHex(record.Hash)).append("\n");
}

std::string JsonLine(const AuditRecord& record) {
  std::string line = "{\"number\":";
  line.append(std::to_string(record.Number)).append(",\"time\":\"").append(TimeStamp(record.At));
  line.append("\"");
  for (const Field& field : TextsOf(record))
    line.append(",\"").append(field.Name).append("\":").append(JsonText(field.Text));
  return line.append(",\"hash\":\"").append(ToHex(record.Hash)).append("\"}\n");
}

}  // namespace

std::string_view ExportHead(ExportFormat format) {
  return format == ExportFormat::Csv
             ? "number,time,actor,action,subject,outcome,station,process,account,hash\n"
             : "";
}

std::string ExportLine(ExportFormat format, const AuditRecord& record) {
  return format == ExportFormat::Csv ? CsvLine(record) : JsonLine(record);
}

void ExportAudit(AuditTrail& trail, ExportFormat format,
                 const std::function<void(std::string_view)>& sink) {
  std::int64_t last = 0;
  for (;;) {
    const std::vector<AuditRecord> records = trail.After(last, kExported);
    if (records.empty()) return;
    for (const AuditRecord& record : records)
      sink(ExportLine(format, record));
    last = records.back().Number;
  }
}

}  // namespace krx::runtime
