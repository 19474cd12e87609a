#include <gtest/gtest.h>

#include "support/CalenderWorld.h"

// The month view's redraws are held only through the scope objects, so that
// every hold is released exactly once.
namespace kelvane {
namespace {

using testing::CalenderWorld;

template <typename MonthView>
concept HoldsRedrawsByHand = requires(MonthView& view) {
    view.HoldRedraws(true);
};

TEST(RedrawHolds, OnlyTheScopeObjectsHoldRedraws) {
    EXPECT_FALSE(HoldsRedrawsByHand<MonthViewControl>);
    EXPECT_FALSE(HoldsRedrawsByHand<Calender>);
}

TEST(RedrawHolds, HeldRedrawsNestAndTheLastOneDrawsOnce) {
    CalenderWorld world;
    {
        const RedrawsHeld outer(*world.calender);
        {
            const RedrawsHeld inner(*world.calender);
            world.calender->Display();
        }
        world.calender->Display();
        EXPECT_EQ(world.surface.clears, 0);
    }
    EXPECT_EQ(world.surface.clears, 1);
}

TEST(RedrawHolds, AKeptSelectionComesBackBeforeTheHeldRedraw) {
    CalenderWorld world;
    world.calender->SetDate(2000, 3, 20);
    world.calender->Display();
    const int drawn = world.surface.clears;
    {
        const SelectionKept kept(*world.calender);
        world.calender->SetDate(2000, 3, 4);
        world.calender->Display();
        EXPECT_EQ(world.surface.clears, drawn);
    }
    EXPECT_EQ(world.calender->SelectedDate, (CalDate{2000, 20, 3}));
    EXPECT_EQ(world.calender->HighlightedDate, (CalDate{2000, 20, 3}));
    EXPECT_EQ(world.surface.clears, drawn + 1);
}

}  // namespace
}  // namespace kelvane
