#include <fstream>
#include <string>
#include <vector>

#include "ComponentTest.h"

namespace krx::tests {
namespace {

class TypeLibraryTest : public ComponentTest {
 protected:
  TypeLibraryTest() {
    EXPECT_EQ(LoadTypeLibEx(LoadedComponent::Path().c_str(), REGKIND_NONE, Library.Put()), S_OK);
  }

  com::ComPtr<ITypeInfo> Interface() const {
    com::ComPtr<ITypeInfo> info;
    EXPECT_EQ(Library->GetTypeInfoOfGuid(__uuidof(IKRXDialog), info.Put()), S_OK);
    return info;
  }

  struct Member {
    DISPID Id;
    String Name;
    String Help;
    INVOKEKIND Kind;
    std::vector<String> Parameters;
    bool operator==(const Member&) const = default;
  };
  // The members of the interface itself, in the order of its table.
  std::vector<Member> Members() const;
  std::string Row(const Member& member) const;

  com::ComPtr<ITypeLib> Library;
};

std::vector<TypeLibraryTest::Member> TypeLibraryTest::Members() const {
  const auto info = Interface();
  std::vector<Member> members;
  FUNCDESC* function = nullptr;
  for (UINT i = 0; SUCCEEDED(info->GetFuncDesc(i, &function)); ++i) {
    const DISPID id = function->memid;
    const INVOKEKIND kind = function->invkind;
    const bool own = id > 0 && id < 1000;
    info->ReleaseFuncDesc(function);
    if (!own) continue;
    com::Bstr help;
    info->GetDocumentation(id, nullptr, help.Put(), nullptr, nullptr);
    BSTR names[16] = {};
    UINT count = 0;
    info->GetNames(id, names, 16, &count);
    Member member{id, com::FromBstr(names[0]), help.Text(), kind, {}};
    for (UINT n = 0; n < count; ++n) {
      if (n > 0 && kind == INVOKE_FUNC) member.Parameters.push_back(com::FromBstr(names[n]));
      SysFreeString(names[n]);
    }
    members.push_back(std::move(member));
  }
  return members;
}

TEST_F(TypeLibraryTest, TheLibraryIsDescribed) {
  com::Bstr name;
  com::Bstr help;
  com::Bstr help_file;
  ASSERT_EQ(Library->GetDocumentation(-1, name.Put(), help.Put(), nullptr, help_file.Put()), S_OK);
  EXPECT_EQ(name.Text(), u"KRXDialogs");
  EXPECT_EQ(help.Text(), u" KorvelSuite KRXDialogs");
  EXPECT_TRUE(help_file.Text().ends_with(u"KRCOMponents.chm"));
}

TEST_F(TypeLibraryTest, PropertiesComeFirstInOrderWithTheirHelpTexts) {
  const struct {
    const char16_t* Name;
    const char16_t* Help;
  } expected[] = {
      {u"FontClassCaption", u"Legt die Fontklasse für die Fensterüberschrift fest"},
      {u"FontClassText", u"Legt die Fontklasse für die Textanzeige- und Listenelemente fest"},
      {u"FontClassButton", u"Legt die Fontklasse für die Schaltflächen fest"},
      {u"FontClassInput", u"Legt die Fontklasse für die Texteingabeelemente fest"},
      {u"ButtonMinHeight",
       u"Legt die minimale Höhe (in Twips) für die Schaltflächen der Dialoge fest"},
      {u"CaptionMinHeight",
       u"Legt die minimale Höhe (in Twips) für die Titelzeile der Dialoge fest"},
  };
  const auto members = Members();
  ASSERT_GE(members.size(), 12u);
  for (std::size_t i = 0; i < 6; ++i) {
    for (const std::size_t place : {2 * i, 2 * i + 1}) {
      EXPECT_EQ(members[place].Name, expected[i].Name);
      EXPECT_EQ(members[place].Help, expected[i].Help);
      EXPECT_EQ(members[place].Kind, place % 2 ? INVOKE_PROPERTYPUT : INVOKE_PROPERTYGET);
    }
  }
}

// The help file has its pages under the same numbers.
TEST_F(TypeLibraryTest, EveryMemberTellsItsPageOfTheHelpFile) {
  const auto context = [](ITypeInfo& info, MEMBERID member) {
    DWORD found = 0;
    EXPECT_EQ(info.GetDocumentation(member, nullptr, nullptr, &found, nullptr), S_OK);
    return found;
  };
  for (const Member& member : Members())
    EXPECT_EQ(context(*Interface().Get(), member.Id), 100u + static_cast<DWORD>(member.Id));
  std::vector<DWORD> types;
  for (UINT i = 0; i < Library->GetTypeInfoCount(); ++i) {
    com::ComPtr<ITypeInfo> info;
    ASSERT_EQ(Library->GetTypeInfo(i, info.Put()), S_OK);
    types.push_back(context(*info.Get(), MEMBERID_NIL));
  }
  EXPECT_EQ(types, (std::vector<DWORD>{3, 2, 2})) << "results, interface, class";
}

// A parameter as the manual writes it: "[`A`]" may be left out, "`A` = ..." has a value then.
std::string Describe(const String& name, const PARAMDESC& parameter) {
  const std::string quoted = "`" + ToUtf8(name) + "`";
  if (parameter.wParamFlags & PARAMFLAG_FHASDEFAULT) {
    const VARIANT& value = parameter.pparamdescex->varDefaultValue;
    if (value.vt == VT_BOOL)
      return quoted + (value.boolVal == VARIANT_TRUE ? " = True" : " = False");
    if (value.vt == VT_BSTR) return quoted + " = \"" + ToUtf8(com::FromBstr(value.bstrVal)) + '"';
    return quoted + " = " + std::to_string(value.lVal);
  }
  return (parameter.wParamFlags & PARAMFLAG_FOPT) ? "[" + quoted + "]" : quoted;
}

// The method at a place of the interface as a row of the manual's table.
std::string TypeLibraryTest::Row(const Member& member) const {
  const auto info = Interface();
  std::string parameters;
  FUNCDESC* function = nullptr;
  for (UINT i = 0; SUCCEEDED(info->GetFuncDesc(i, &function)); ++i) {
    for (int n = 0; function->memid == member.Id && n < function->cParams; ++n) {
      const PARAMDESC& parameter = function->lprgelemdescParam[n].paramdesc;
      if (parameter.wParamFlags & PARAMFLAG_FRETVAL) continue;
      if (!parameters.empty()) parameters += ", ";
      parameters += Describe(member.Parameters.at(static_cast<std::size_t>(n)), parameter);
    }
    info->ReleaseFuncDesc(function);
  }
  return "| " + std::to_string(member.Id) + " | `" + ToUtf8(member.Name) + "` | " +
         (parameters.empty() ? "none" : parameters) + " |";
}

TEST_F(TypeLibraryTest, MethodsFollowInTheOrderAndWithTheParametersOfTheManual) {
  std::ifstream manual(KRX_MANUAL);
  ASSERT_TRUE(manual) << KRX_MANUAL;
  std::vector<std::string> expected;
  bool inside = false;
  for (std::string line; std::getline(manual, line);) {
    if (line.starts_with("## ")) inside = line == "## All methods";
    if (inside && line.starts_with("| ") && !line.starts_with("| Id")) expected.push_back(line);
  }
  std::vector<std::string> rows;
  for (const Member& member : Members())
    if (member.Kind == INVOKE_FUNC) rows.push_back(Row(member));
  EXPECT_EQ(rows, expected);
  EXPECT_EQ(Members().size(), 12 + rows.size()) << "six properties come first";
}

TEST_F(TypeLibraryTest, TheHeightsTakeTheirValueByReference) {
  const auto info = Interface();
  FUNCDESC* function = nullptr;
  int found = 0;
  for (UINT i = 0; SUCCEEDED(info->GetFuncDesc(i, &function)); ++i) {
    if ((function->memid == 5 || function->memid == 6) && function->invkind == INVOKE_PROPERTYPUT) {
      const TYPEDESC& type = function->lprgelemdescParam[0].tdesc;
      EXPECT_EQ(type.vt, VT_PTR);
      EXPECT_EQ(type.lptdesc->vt, VT_R4);
      ++found;
    }
    info->ReleaseFuncDesc(function);
  }
  EXPECT_EQ(found, 2);
}

TEST_F(TypeLibraryTest, TheResultsHaveTheirValues) {
  const std::vector<std::pair<String, LONG>> expected{
      {u"krOK", 1},  {u"krCancel", 2}, {u"krAbort", 3},    {u"krRetry", 4},    {u"krIgnore", 5},
      {u"krYes", 6}, {u"krNo", 7},     {u"krButton1", 11}, {u"krButton2", 12}, {u"krButton3", 13}};
  com::ComPtr<ITypeInfo> info;
  MEMBERID member = 0;
  USHORT found = 1;
  wchar_t name[] = L"KRMsgBoxResult";
  ASSERT_EQ(Library->FindName(name, 0, info.Put(), &member, &found), S_OK);
  ASSERT_EQ(found, 1);
  std::vector<std::pair<String, LONG>> values;
  VARDESC* variable = nullptr;
  for (UINT i = 0; SUCCEEDED(info->GetVarDesc(i, &variable)); ++i) {
    com::Bstr text;
    info->GetDocumentation(variable->memid, text.Put(), nullptr, nullptr, nullptr);
    values.emplace_back(text.Text(), variable->lpvarValue->lVal);
    info->ReleaseVarDesc(variable);
  }
  EXPECT_EQ(values, expected);
}

}  // namespace
}  // namespace krx::tests
