#pragma once

namespace kelvane {

// What the month view hears from the window that shows its DrawingSurface.
class CalenderEvents {
  public:
    enum class MouseButton { Left = 1, Right = 2, Middle = 4 };

    virtual ~CalenderEvents() = default;

    // The surface has a new size; its picture was cleared.
    virtual void Calender_Resize() = 0;
    // A mouse button went down at a point of the surface.
    virtual void Calender_MouseDown(MouseButton button, double x, double y) = 0;
    // A press and release of the left button on the surface.
    virtual void Calender_Click() = 0;
};

}  // namespace kelvane
