#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "runtime/users/store/AuditTrail.h"

namespace krx::runtime {

enum class ExportFormat { Csv, JsonLines };

// The head line of a format; empty where it has none.
std::string_view ExportHead(ExportFormat format);

// An event in one line, its end included, in UTF-8. No text in it can end the line or a field, and
// none is taken for a formula by a program that calculates with tables.
std::string ExportLine(ExportFormat format, const AuditRecord& record);

// Hands all events over, line by line, without the head.
void ExportAudit(AuditTrail& trail, ExportFormat format,
                 const std::function<void(std::string_view)>& sink);

}  // namespace krx::runtime
