#include "base/Error.h"

#include <utility>

namespace krx {

Error::Error(std::uint32_t status, String description, String source)
    : status_(status),
      description_(std::move(description)),
      source_(std::move(source)),
      what_(ToUtf8(description_)) {}

Error RuntimeError(std::int32_t number, String description) {
  return Error(0x800A0000u + static_cast<std::uint32_t>(number), std::move(description));
}

Error ErrorInFlight() {
  try {
    throw;
  } catch (const Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return RuntimeError(7, u"Out of memory");
  } catch (const std::exception& exception) {
    const std::string what = exception.what();
    return RuntimeError(51, u"Internal error: " + String(what.begin(), what.end()));
  } catch (...) {
    return RuntimeError(51, u"Internal error");
  }
}

Error TypeMismatch() {
  return RuntimeError(13, u"Type mismatch");
}

Error ObjectNotSet() {
  return RuntimeError(91, u"Object reference not set");
}

}  // namespace krx
