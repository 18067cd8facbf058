// The work of the Gdattime unit's first start and last stop.
#pragma once

namespace quill::Gdattime::internal {

// LongMonthNames2[i] = "of " + long month name i of the system default locale.
void FillMonthPhrases();

// Empties LongMonthNames2 and ShortYearName.
void ClearNames();

}  // namespace quill::Gdattime::internal
