#include "runtime/users/com/Arrays.h"

#include <new>

#include "com/Errors.h"
#include "com/Text.h"

namespace krx::runtime {
namespace {

com::Variant NewArray(VARTYPE type, std::size_t size) {
  com::Variant array;
  array.Get().parray = SafeArrayCreateVector(type, 0, static_cast<ULONG>(size));
  if (!array.Get().parray) throw std::bad_alloc();
  array.Get().vt = static_cast<VARTYPE>(VT_ARRAY | type);
  return array;
}

void Put(const com::Variant& array, std::size_t index, void* value) {
  LONG at = static_cast<LONG>(index);
  com::Check(SafeArrayPutElement(array.Get().parray, &at, value));
}

}  // namespace

com::Variant ArrayOf(std::span<const String> texts) {
  com::Variant array = NewArray(VT_BSTR, texts.size());
  for (std::size_t i = 0; i < texts.size(); ++i)
    Put(array, i, com::Bstr(texts[i]).Get());
  return array;
}

com::Variant ArrayOf(std::span<const std::int32_t> numbers) {
  com::Variant array = NewArray(VT_I4, numbers.size());
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    LONG number = numbers[i];
    Put(array, i, &number);
  }
  return array;
}

}  // namespace krx::runtime
