#pragma once

#include "gui/Platform.h"
#include "store/Store.h"

namespace kelvane {

// The running program: opens the document's temporary stores, shows the main
// window until it is closed, and closes and deletes the stores again.
class Application {
  public:
    explicit Application(const Platform& platform) : store_(platform) {}

    // Runs the program; returns the exit code of the event loop.
    int Run();

    Store& Document() { return store_; }

    // The start-up's own work before any window shows.
    void Start();
    // The orderly end: the temporary files are closed and deleted.
    void Finish();

  private:
    Store store_;
};

}  // namespace kelvane
