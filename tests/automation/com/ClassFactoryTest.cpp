#include "ComponentTest.h"

namespace krx::tests {
namespace {

class ClassFactoryTest : public ComponentTest {
 protected:
  com::ComPtr<IClassFactory> Factory() {
    com::ComPtr<IClassFactory> factory;
    EXPECT_EQ(Module.GetClassObject(__uuidof(KRXDialog), IID_IClassFactory, factory.PutVoid()),
              S_OK);
    return factory;
  }
};

TEST_F(ClassFactoryTest, AnUnknownClassIsRefused) {
  void* object = this;
  EXPECT_EQ(Module.GetClassObject(IID_IDispatch, IID_IClassFactory, &object),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(object, nullptr);
}

TEST_F(ClassFactoryTest, TheClassObjectHasNoOtherInterface) {
  void* object = this;
  EXPECT_EQ(Module.GetClassObject(__uuidof(KRXDialog), IID_IDispatch, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(Module.CanUnload(), S_OK);
}

TEST_F(ClassFactoryTest, ANullPointerIsRefused) {
  EXPECT_EQ(Module.GetClassObject(__uuidof(KRXDialog), IID_IClassFactory, nullptr), E_POINTER);
  EXPECT_EQ(Factory()->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(Factory()->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(ClassFactoryTest, AggregationIsRefused) {
  const auto factory = Factory();
  void* object = this;
  EXPECT_EQ(factory->CreateInstance(factory.Get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(object, nullptr);
}

TEST_F(ClassFactoryTest, AnObjectWithoutTheWantedInterfaceIsNotLeftBehind) {
  void* object = this;
  EXPECT_EQ(Factory()->CreateInstance(nullptr, IID_IPersist, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
}

// The end of any object clears what all of them share, so none is made that nobody can use.
TEST_F(ClassFactoryTest, ARequestForAnInterfaceThatIsNotThereLeavesTheSettingsAlone) {
  const auto dialog = Module.Create();
  float height = 555;
  EXPECT_EQ(dialog->put_ButtonMinHeight(&height), S_OK);
  void* object = this;
  EXPECT_EQ(Factory()->CreateInstance(nullptr, IID_IPersist, &object), E_NOINTERFACE);
  EXPECT_EQ(ButtonMinHeight(*dialog), 555);
}

TEST_F(ClassFactoryTest, AHeldClassObjectKeepsTheModule) {
  auto factory = Factory();
  EXPECT_EQ(Module.CanUnload(), S_FALSE);
  factory.Reset();
  EXPECT_EQ(Module.CanUnload(), S_OK);
}

TEST_F(ClassFactoryTest, LocksOfTheServerAreCounted) {
  const auto lock = [this](BOOL on) { EXPECT_EQ(Factory()->LockServer(on), S_OK); };
  lock(TRUE);
  lock(TRUE);
  lock(FALSE);
  EXPECT_EQ(Module.CanUnload(), S_FALSE);
  lock(FALSE);
  EXPECT_EQ(Module.CanUnload(), S_OK);
}

}  // namespace
}  // namespace krx::tests
