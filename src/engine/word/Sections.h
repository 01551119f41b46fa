#pragma once

#include "engine/word/Forward.h"

namespace wordbm::word {

class Sections {
public:
    virtual ~Sections() = default;
    virtual int Count() const = 0;
    virtual SectionPtr Item(int index) = 0;
};

class Section {
public:
    virtual ~Section() = default;
    virtual int Index() const = 0;
    virtual HeadersFootersPtr Headers() = 0;
    virtual HeadersFootersPtr Footers() = 0;
    virtual PageSetupPtr PageSetup() = 0;
};

// The section's page, in points.
class PageSetup {
public:
    virtual ~PageSetup() = default;
    virtual float PageHeight() const = 0;
    virtual float BottomMargin() const = 0;
    virtual void BottomMargin(float points) = 0;
};

// Always three: wdHeaderFooterPrimary, wdHeaderFooterFirstPage, wdHeaderFooterEvenPages. A type the
// section does not define is inherited from the section before; one no section defines does not exist.
class HeadersFooters {
public:
    virtual ~HeadersFooters() = default;
    virtual int Count() const = 0;
    virtual HeaderFooterPtr Item(int index) = 0;
};

class HeaderFooter {
public:
    virtual ~HeaderFooter() = default;
    virtual int Index() const = 0;
    virtual bool Exists() const = 0;
    // The section shows the one of the section before (always false for the first section).
    virtual bool LinkToPrevious() const = 0;
    virtual RangePtr Range() = 0;   // empty when it does not exist
    virtual ShapesPtr Shapes() = 0; // as in Word: the shapes of all headers and footers of the document
};

class MailMerge {
public:
    virtual ~MailMerge() = default;
    virtual int MainDocumentType() const = 0;
    // wdNotAMergeDocument (-1) removes the mail-merge settings and their data source.
    virtual void MainDocumentType(int type) = 0;
};

} // namespace wordbm::word
