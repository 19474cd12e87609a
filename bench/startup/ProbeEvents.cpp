// The probe's view of the top-level windows: what each X event tells of them
// and whether the title window has been painted yet.
#include <X11/Xatom.h>
#include <X11/Xutil.h>

#include <cstring>
#include <string>

#include "Probe.h"

namespace first_paint {

namespace {

// Reads a text property of 8-bit items, whatever its type; empty when absent.
std::optional<std::string> ReadTextProperty(Display* display, Window window, Atom property) {
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long remaining = 0;
    unsigned char* data = nullptr;
    const int status =
        XGetWindowProperty(display, window, property, 0, 1024, False, AnyPropertyType, &type,
                           &format, &count, &remaining, &data);
    std::optional<std::string> text;
    if (status == Success && type != None && format == 8 && data != nullptr) {
        text = std::string(reinterpret_cast<const char*>(data), count);
    }
    if (data != nullptr) {
        XFree(data);
    }
    return text;
}

}  // namespace

void Probe::UpdateTitle(Window window, TopLevel& topLevel) {
    const std::optional<std::string> netName = ReadTextProperty(display_, window, netWmName_);
    const std::optional<std::string> name = ReadTextProperty(display_, window, XA_WM_NAME);
    const bool matches =
        (netName && *netName == options_.title) || (!netName && name && *name == options_.title);
    if (matches != topLevel.titleMatches) {
        log_.Line("window 0x%lx title \"%s\" %s", window, netName ? netName->c_str() : "",
                  matches ? "matches" : "no longer matches");
    }
    topLevel.titleMatches = matches;
}

void Probe::HandleEvent(const XEvent& event) {
    const Clock::time_point now = Clock::now();
    switch (event.type) {
        case CreateNotify:
            OnCreated(event.xcreatewindow);
            break;
        case MapNotify:
            OnMapped(event.xmap, now);
            break;
        case UnmapNotify:
            OnUnmapped(event.xunmap);
            break;
        case DestroyNotify:
            OnDestroyed(event.xdestroywindow);
            break;
        case PropertyNotify:
            OnPropertyChanged(event.xproperty);
            break;
        default:
            if (event.type == damageEventBase_ + XDamageNotify) {
                OnDamaged(event, now);
            }
            break;
    }
}

void Probe::OnCreated(const XCreateWindowEvent& created) {
    if (created.parent != root_) {
        return;
    }
    TopLevel& topLevel = windows_[created.window];
    topLevel.overrideRedirect = created.override_redirect;
    XSelectInput(display_, created.window, PropertyChangeMask);
    topLevel.damageSerial = NextRequest(display_);
    topLevel.damage = XDamageCreate(display_, created.window, XDamageReportNonEmpty);
    damages_[topLevel.damage] = created.window;
    XFlush(display_);
    log_.Line("created 0x%lx %dx%d%+d%+d%s", created.window, created.width, created.height,
              created.x, created.y, created.override_redirect ? " (override-redirect)" : "");
}

void Probe::OnMapped(const XMapEvent& mapped, Clock::time_point now) {
    if (mapped.event != root_) {
        return;
    }
    const auto found = windows_.find(mapped.window);
    if (found == windows_.end()) {
        return;
    }
    TopLevel& topLevel = found->second;
    topLevel.mapped = true;
    if (!topLevel.mappedAt) {
        topLevel.mappedAt = now;
    }
    // The event carries the sequence number of the last request of ours the
    // server had handled when the window was mapped.
    if (mapped.serial < topLevel.damageSerial) {
        topLevel.mappedUnwatched = true;
    }
    log_.Line("mapped 0x%lx%s", mapped.window,
              topLevel.mappedUnwatched ? " BEFORE its Damage object existed" : "");
    UpdateTitle(mapped.window, topLevel);
}

void Probe::OnUnmapped(const XUnmapEvent& unmapped) {
    const auto found = windows_.find(unmapped.window);
    if (unmapped.event == root_ && found != windows_.end()) {
        found->second.mapped = false;
        log_.Line("unmapped 0x%lx", unmapped.window);
    }
}

void Probe::OnDestroyed(const XDestroyWindowEvent& destroyed) {
    const auto found = windows_.find(destroyed.window);
    if (destroyed.event == root_ && found != windows_.end()) {
        damages_.erase(found->second.damage);
        windows_.erase(found);
        log_.Line("destroyed 0x%lx", destroyed.window);
    }
}

void Probe::OnPropertyChanged(const XPropertyEvent& property) {
    const auto found = windows_.find(property.window);
    if (found != windows_.end() && found->second.mapped &&
        (property.atom == netWmName_ || property.atom == XA_WM_NAME)) {
        UpdateTitle(property.window, found->second);
    }
}

void Probe::OnDamaged(const XEvent& event, Clock::time_point now) {
    XDamageNotifyEvent damaged;
    std::memcpy(&damaged, &event, sizeof damaged);
    const auto found = damages_.find(damaged.damage);
    if (found == damages_.end()) {
        return;
    }
    TopLevel& topLevel = windows_.at(found->second);
    if (!topLevel.firstDamageAt) {
        topLevel.firstDamageAt = now;
        log_.Line("first damage of 0x%lx: %dx%d%+d%+d", found->second, damaged.area.width,
                  damaged.area.height, damaged.area.x, damaged.area.y);
    }
}

void Probe::CheckResult() {
    // The title may be set after the window was mapped and even after it was
    // first painted, so the windows are looked at again after every event.
    std::optional<Clock::time_point> firstPaint;
    bool unwatched = false;
    for (const auto& [window, topLevel] : windows_) {
        if (!topLevel.titleMatches || !topLevel.mappedAt) {
            continue;
        }
        if (topLevel.mappedUnwatched) {
            unwatched = true;
        } else if (topLevel.firstDamageAt) {
            log_.Line("window 0x%lx first painted %.2f ms after the start (mapped at %.2f ms)",
                      window, log_.MillisecondsSinceStart(*topLevel.firstDamageAt),
                      log_.MillisecondsSinceStart(*topLevel.mappedAt));
            if (!firstPaint || *topLevel.firstDamageAt < *firstPaint) {
                firstPaint = topLevel.firstDamageAt;
            }
        }
    }
    if (firstPaint) {
        result_ = log_.MillisecondsSinceStart(*firstPaint);
    } else if (unwatched) {
        refused_ = true;
    }
}

}  // namespace first_paint
