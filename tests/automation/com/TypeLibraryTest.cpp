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
    String Name;
    String Help;
    INVOKEKIND Kind;
    std::vector<String> Parameters;
    bool operator==(const Member&) const = default;
  };
  // The members of the interface itself, in the order of its table.
  std::vector<Member> Members() const;

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
    Member member{com::FromBstr(names[0]), help.Text(), kind, {}};
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

TEST_F(TypeLibraryTest, MethodsFollowInOrderWithTheirParameters) {
  const std::vector<String> file{u"FileName", u"StartDirectory", u"Filter", u"AllowChangeUp",
                                 u"Title"};
  const std::vector<String> box{u"Text", u"Style", u"Title", u"HelpFile", u"Context"};
  const std::vector<String> directory{u"StartDirectory", u"AllowChangeUp", u"Title"};
  std::vector<String> box_ex = box;
  box_ex.insert(box_ex.end(), {u"Button1", u"Button2", u"Button3", u"AutoActivation"});
  const std::vector<std::pair<String, std::vector<String>>> expected{
      {u"SetHostApp", {u"HostApp"}},
      {u"KRMsgBox", box},
      {u"KRMsgBoxEx", box_ex},
      {u"KRSelectDirectory", directory},
      {u"KRSelectDirectoryTouch", directory},
      {u"KRSaveFileAs", file},
      {u"KROpenFile", file},
      {u"KROpenFileTouch", file},
      {u"KRUserLogOn", {}},
      {u"KRUserLogOnCombo", {}},
      {u"KRAddUser", {}},
      {u"KRWhoAmI", {}},
      {u"KRUser", {}},
      {u"KRChangePassword", {}},
  };
  const auto members = Members();
  ASSERT_EQ(members.size(), 12 + expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    auto parameters = members[12 + i].Parameters;
    // The result is a parameter to the interface's own view only.
    if (!parameters.empty() && parameters.back() == u"Result") parameters.pop_back();
    EXPECT_EQ(members[12 + i].Name, expected[i].first);
    EXPECT_EQ(parameters, expected[i].second);
  }
}

// Flags and default of one parameter, as text: "" required, "opt" optional, "=..." a default.
String Describe(const PARAMDESC& parameter) {
  if (parameter.wParamFlags & PARAMFLAG_FHASDEFAULT) {
    com::Variant value = com::Variant::Copy(parameter.pparamdescex->varDefaultValue);
    value.Convert(VT_BSTR, LOCALE_INVARIANT);
    String text(1, u'=');
    text += com::FromBstr(value.Get().bstrVal);
    return text;
  }
  return parameter.wParamFlags & PARAMFLAG_FOPT ? u"opt" : u"";
}

std::vector<String> ParametersOf(ITypeInfo& info, DISPID id) {
  std::vector<String> result;
  FUNCDESC* function = nullptr;
  for (UINT i = 0; SUCCEEDED(info.GetFuncDesc(i, &function)); ++i) {
    for (int n = 0; function->memid == id && n < function->cParams; ++n) {
      const PARAMDESC& parameter = function->lprgelemdescParam[n].paramdesc;
      if (!(parameter.wParamFlags & PARAMFLAG_FRETVAL)) result.push_back(Describe(parameter));
    }
    info.ReleaseFuncDesc(function);
  }
  return result;
}

TEST_F(TypeLibraryTest, OptionalParametersHaveTheirDefaults) {
  using Expected = std::vector<String>;
  const auto info = Interface();
  EXPECT_EQ(ParametersOf(*info, 8), (Expected{u"", u"=0", u"opt", u"opt", u"opt"}));
  EXPECT_EQ(ParametersOf(*info, 9),
            (Expected{u"", u"=0", u"opt", u"opt", u"opt", u"opt", u"opt", u"opt", u"=0"}));
  const Expected directory = ParametersOf(*info, 10);
  ASSERT_EQ(directory.size(), 3u);
  EXPECT_EQ(directory[0], u"=");
  EXPECT_NE(directory[1], u"=0") << "true, as the locale writes it";
  EXPECT_EQ(directory[2], u"=");
  EXPECT_EQ(ParametersOf(*info, 11)[0], u"");
  EXPECT_EQ(ParametersOf(*info, 12).size(), 5u);
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
