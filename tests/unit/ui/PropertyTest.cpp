#include "ui/Property.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace krx::ui {

using ::testing::ElementsAre;

struct Owner : PropertyOwner {
  std::vector<Aspect> Changes;
  void Changed(Aspect aspect) override { Changes.push_back(aspect); }

  Property<std::string> Text{*this, Aspect::Text, "initial"};
  Property<float> Width{*this, Aspect::Bounds};
};

TEST(Property, IsReadByCallingAndWrittenByAssignment) {
  Owner owner;
  EXPECT_EQ(owner.Text(), "initial");
  EXPECT_EQ(owner.Width(), 0);
  owner.Text = "new";
  owner.Width = 1.5f;
  EXPECT_EQ(owner.Text(), "new");
  EXPECT_EQ(owner.Width(), 1.5f);
}

TEST(Property, OwnerHearsOfEveryChangeByItsAspect) {
  Owner owner;
  owner.Text = "a";
  owner.Width = 2;
  owner.Text = "b";
  EXPECT_THAT(owner.Changes, ElementsAre(Aspect::Text, Aspect::Bounds, Aspect::Text));
}

TEST(Property, WritingTheSameValueIsNoChange) {
  Owner owner;
  owner.Text = "initial";
  owner.Width = 0;
  EXPECT_TRUE(owner.Changes.empty());
}

TEST(Property, AdoptedValuesAreTakenOverSilently) {
  Owner owner;
  EXPECT_TRUE(owner.Text.Adopt("typed"));
  EXPECT_FALSE(owner.Text.Adopt("typed"));
  EXPECT_EQ(owner.Text(), "typed");
  EXPECT_TRUE(owner.Changes.empty());
}

TEST(Property, OwnerSeesTheNewValueAlready) {
  struct Reader : PropertyOwner {
    Property<int> Value{*this, Aspect::Text, 1};
    int Seen = 0;
    void Changed(Aspect) override { Seen = Value(); }
  } reader;
  reader.Value = 2;
  EXPECT_EQ(reader.Seen, 2);
}

TEST(Event, WithoutAHandlerNothingHappens) {
  const Event<int> event;
  event(1);
}

TEST(Event, HandlerGetsTheArguments) {
  Event<int, std::string> event;
  std::string got;
  event = [&](int number, const std::string& text) { got = text + std::to_string(number); };
  event(3, "a");
  EXPECT_EQ(got, "a3");
}

TEST(Event, HandlerMayChangeAReferenceArgument) {
  Event<int&> event;
  event = [](int& key) { key = 0; };
  int key = 13;
  event(key);
  EXPECT_EQ(key, 0);
}

TEST(Event, OneHandlerReplacesAnother) {
  Event<> event;
  int first = 0;
  int second = 0;
  event = [&] { ++first; };
  event = [&] { ++second; };
  event();
  EXPECT_EQ(first, 0);
  EXPECT_EQ(second, 1);
}

TEST(Event, HandlerMayUnbindItself) {
  Event<> event;
  int runs = 0;
  event = [&] {
    event = nullptr;
    ++runs;  // what the handler holds must still be there
  };
  event();
  event();
  EXPECT_EQ(runs, 1);
}

TEST(Event, HandlerMayBindAnotherOneForTheNextTime) {
  Event<> event;
  std::string order;
  event = [&] {
    event = [&] { order += 'b'; };
    order += 'a';
  };
  event();
  event();
  EXPECT_EQ(order, "ab");
}

TEST(Event, HandlerMayRaiseItsOwnEvent) {
  Event<int> event;
  int depth = 0;
  event = [&](int left) {
    ++depth;
    if (left > 0) event(left - 1);
  };
  event(3);
  EXPECT_EQ(depth, 4);
}

TEST(Accessor, IsWrittenAndReadByOperationsOfItsOwner) {
  struct Counter {
    void Count(int from) { next = from + 1; }
    int Next() const { return next; }
    int next = 0;
    Accessor<Counter, &Counter::Count, &Counter::Next> Value{*this};
  } counter;
  counter.Value = 4;
  EXPECT_EQ(counter.Value(), 5);
}

TEST(Event, ErrorOfAHandlerReachesWhoeverRaisesTheEvent) {
  Event<> event;
  event = [] { throw std::string("failure"); };
  EXPECT_THROW(event(), std::string);
}

}  // namespace krx::ui
