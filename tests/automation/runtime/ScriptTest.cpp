// The services as a script client in a process of its own sees them.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <sstream>

#include "ModuleCopy.h"
#include "driver/Client.h"

namespace krx::runtime {
namespace {

// Prints into a Unicode file: the script host's own output is in the system's character set, which
// says nothing about the texts.
constexpr char kScript[] = R"(
Dim out
Set out = CreateObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0), True, True)
Dim settings, texts, fonts, text, font
Set settings = CreateObject("KorvelRuntime.RuntimeSettings")
Set texts = CreateObject("KorvelRuntime.TextService")
Set fonts = CreateObject("KorvelRuntime.FontService")

settings.Language = "de"
out.WriteLine settings.Language
texts.GetText "keyChangeUser", -103, text
out.WriteLine text
texts.ResolveText "@TitleOpen", text
out.WriteLine text
texts.GetText "msgRenewPassword", -103, text
out.WriteLine text
settings.Language = "en"
texts.GetText "keyChangeUser", -103, text
out.WriteLine text

fonts.SelectFontClass "KRPanelCaption"
fonts.GetFont font
out.WriteLine CStr(CBool(font.Bold)) & " " & CStr(CInt(font.Size))

On Error Resume Next
settings.Language = "tlh"
out.WriteLine Hex(Err.Number) & " " & Err.Source & ": " & Err.Description
Err.Clear
texts.ResolveText "no reference", text
out.WriteLine Hex(Err.Number) & " " & Err.Source & ": " & Err.Description
out.Close
)";

String ReadUnicode(const std::filesystem::path& file) {
  std::ostringstream bytes;
  bytes << std::ifstream(file, std::ios::binary).rdbuf();
  const std::string content = bytes.str();
  String text(content.size() / sizeof(char16_t), u'\0');
  std::memcpy(text.data(), content.data(), text.size() * sizeof(char16_t));
  return text;
}

TEST(RuntimeScript, UsesEveryService) {
  const HMODULE component = LoadLibraryW(ComponentFile().c_str());
  ASSERT_NE(nullptr, component);
  const auto address = reinterpret_cast<void*>(GetProcAddress(component, "DllRegisterServer"));
  ASSERT_EQ(S_OK, reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(address)());
  FreeLibrary(component);

  const drive::ScriptFile script(kScript);
  const ModuleCopy scratch;
  const auto output = scratch.Folder() / "output.txt";
  drive::Client client(script.Command() + L" \"" + output.wstring() + L"\"");
  EXPECT_EQ(0u, client.Finish());
  EXPECT_EQ(
      u"\uFEFF"
      u"de\r\n"
      u"&\u00C4ndern\r\n"
      u"Datei \u00F6ffnen\r\n"
      u"Das Passwort muss erneuert werden.\nBitte legen Sie ein neues Passwort fest.\r\n"
      u"&Change\r\n"
      u"True 14\r\n"
      u"80070057 KorvelRuntime: There are no texts for the language \"tlh\". Name \"de\", \"en\" "
      u"or "
      u"the language of a file KorvelTexts.<language>.txt.\r\n"
      u"80070057 KorvelRuntime: A text reference begins with \"@\".\r\n",
      ReadUnicode(output));
}

}  // namespace
}  // namespace krx::runtime
