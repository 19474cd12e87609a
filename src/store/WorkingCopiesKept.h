#pragma once

#include "store/Store.h"

namespace kelvane {

// Keeps the shared working copies (the current date entry and its date, the
// schedule's working list and the note buffer) across a walk over the whole
// document, for a writer that may run while a command holds them: what the
// command loaded is there again when the walk ends.
class WorkingCopiesKept {
  public:
    explicit WorkingCopiesKept(Store& store)
        : store_(store),
          entry_(store.calender.CurrentEntry),
          entryDate_(store.calender.CurrentEntryDate),
          schedule_(store.appointments.AppointmentList),
          note_(store.diary.NoteBuffer),
          noteSlot_(store.diary.CurrentNoteSlot) {}
    ~WorkingCopiesKept() {
        store_.calender.CurrentEntry = entry_;
        store_.calender.CurrentEntryDate = entryDate_;
        store_.appointments.AppointmentList = schedule_;
        store_.diary.NoteBuffer = note_;
        store_.diary.CurrentNoteSlot = noteSlot_;
    }
    WorkingCopiesKept(const WorkingCopiesKept&) = delete;
    WorkingCopiesKept& operator=(const WorkingCopiesKept&) = delete;

  private:
    Store& store_;
    DateEntry entry_;
    CalDate entryDate_;
    AppointmentSlots schedule_;
    FixedText<NoteLength> note_;
    qint16 noteSlot_;
};

}  // namespace kelvane
