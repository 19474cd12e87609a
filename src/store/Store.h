#pragma once

#include "gui/Platform.h"
#include "store/AppointmentMOD.h"
#include "store/CalenderMOD.h"
#include "store/DateHasContent.h"
#include "store/DiaryMOD.h"
#include "store/Module1.h"

namespace kelvane {

// The document store of one running program: the shared state and the two
// temporary stores, wired to one outside world. The stores' files are opened
// by InitAppointmentStore and InitDiaryStore, not here.
struct Store {
    explicit Store(const Platform& platform)
        : module1(platform),
          appointments(module1, platform.Messages),
          diary(module1, platform.Messages) {}

    // Whether the date whose entry, note and schedule are loaded has any content;
    // load all three for the same date first.
    bool DateHasContent() const {
        return kelvane::DateHasContent(calender.CurrentEntry, diary.NoteBuffer.Value(),
                                       appointments.CountAppointments());
    }

    Module1 module1;
    CalenderMOD calender;
    AppointmentMOD appointments;
    DiaryMOD diary;
};

}  // namespace kelvane
