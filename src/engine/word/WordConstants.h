#pragma once

// Word's own numbers for the constants the engine passes, so that a backend over real Word
// automation can take them unchanged.
namespace wordbm::word::wd {

inline constexpr int wdStory = 6;
inline constexpr int wdCharacter = 1;
inline constexpr int wdMove = 0;
inline constexpr int wdExtend = 1;

inline constexpr int wdExportFormatPDF = 17;

inline constexpr int wdNotAMergeDocument = -1;

inline constexpr int wdHeaderFooterPrimary = 1;
inline constexpr int wdHeaderFooterFirstPage = 2;
inline constexpr int wdHeaderFooterEvenPages = 3;

// Shape types (MsoShapeType).
inline constexpr int msoGroup = 6;
inline constexpr int msoPicture = 13;
inline constexpr int msoTextBox = 17;
inline constexpr int msoCanvas = 20;

inline constexpr int wdDoNotSaveChanges = 0;
inline constexpr int wdSaveChanges = -1;

} // namespace wordbm::word::wd
