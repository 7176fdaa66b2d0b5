#include "Picture.h"

#include <bcrypt.h>

#include <array>
#include <fstream>
#include <stdexcept>

namespace krx::pictures {

namespace {

// Pixels of a part of the screen in four bytes each: blue, green, red and nothing.
std::vector<std::uint8_t> ScreenBytes(const RECT& place, int width, int height) {
  const HDC screen = GetDC(nullptr);
  const HDC copy = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
  const HGDIOBJ before = SelectObject(copy, bitmap);
  BitBlt(copy, 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
  SelectObject(copy, before);
  BITMAPINFO format{};
  format.bmiHeader = {sizeof format.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(width) *
                                  static_cast<std::size_t>(height) * 4);
  GetDIBits(screen, bitmap, 0, static_cast<UINT>(height), bytes.data(), &format, DIB_RGB_COLORS);
  DeleteObject(bitmap);
  DeleteDC(copy);
  ReleaseDC(nullptr, screen);
  return bytes;
}

void Check(NTSTATUS status) {
  if (status < 0) throw std::runtime_error("the sum of a picture cannot be made");
}

class Hash {
 public:
  Hash() {
    Check(BCryptOpenAlgorithmProvider(&algorithm_, BCRYPT_SHA256_ALGORITHM, nullptr, 0));
    Check(BCryptCreateHash(algorithm_, &hash_, nullptr, 0, nullptr, 0, 0));
  }
  ~Hash() {
    BCryptDestroyHash(hash_);
    BCryptCloseAlgorithmProvider(algorithm_, 0);
  }
  Hash(const Hash&) = delete;
  Hash& operator=(const Hash&) = delete;

  void Add(const void* bytes, std::size_t size) {
    auto* const input = static_cast<UCHAR*>(const_cast<void*>(bytes));  // it is only read
    Check(BCryptHashData(hash_, input, static_cast<ULONG>(size), 0));
  }
  std::string Finish() {
    constexpr const char* kDigits = "0123456789abcdef";
    std::array<UCHAR, 32> sum{};
    Check(BCryptFinishHash(hash_, sum.data(), static_cast<ULONG>(sum.size()), 0));
    std::string text;
    for (const UCHAR byte : sum)
      text += {kDigits[byte >> 4], kDigits[byte & 15]};
    return text;
  }

 private:
  BCRYPT_ALG_HANDLE algorithm_ = nullptr;
  BCRYPT_HASH_HANDLE hash_ = nullptr;
};

std::string Size(const Picture& picture) {
  return std::to_string(picture.Width) + ' ' + std::to_string(picture.Height);
}

}  // namespace

Picture TakePicture(const RECT& place) {
  Picture picture{place.right - place.left, place.bottom - place.top, {}};
  const std::vector<std::uint8_t> bytes = ScreenBytes(place, picture.Width, picture.Height);
  picture.Pixels.resize(bytes.size() / 4 * 3);
  for (std::size_t from = 0, to = 0; from < bytes.size(); from += 4, to += 3)
    for (std::size_t part = 0; part < 3; ++part)
      picture.Pixels[to + part] = bytes[from + 2 - part];
  return picture;
}

std::string SumOf(const Picture& picture) {
  Hash hash;
  const std::string head = Size(picture) + '\n';
  hash.Add(head.data(), head.size());
  hash.Add(picture.Pixels.data(), picture.Pixels.size());
  return hash.Finish();
}

void Write(const Picture& picture, const std::filesystem::path& file) {
  std::filesystem::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream << "P6 " << Size(picture) << " 255\n";
  stream.write(reinterpret_cast<const char*>(picture.Pixels.data()),
               static_cast<std::streamsize>(picture.Pixels.size()));
  if (!stream.flush()) throw std::runtime_error("a picture cannot be written: " + file.string());
}

}  // namespace krx::pictures
