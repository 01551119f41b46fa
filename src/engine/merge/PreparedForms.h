#pragma once

#include "engine/merge/PreparedForm.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace wordbm {

// The working form made ready once per run for each shape of payment slip among the run's rows,
// up to a few: each costs about one invoice through the word processor. The rows of the other
// shapes, and all rows of a form that cannot be prepared, go through the word processor.
class PreparedForms {
public:
    static constexpr std::size_t MostShapes = 4;

    // Null when no form could be prepared for any of `rows`.
    static std::unique_ptr<PreparedForms> make(word::Application& word, const std::string& workingForm,
                                               const KnownFields& fields, BookmarkFiller& filler,
                                               const std::string& scratchFolder,
                                               const std::vector<std::int32_t>& rows);

    // The form for rows of this BookmarkFiller::slipShape; null when there is none.
    const PreparedForm* find(const std::string& shape) const;
    // The form for data line `row`; its slip's shape is only worked out when forms differ by it.
    const PreparedForm* formFor(const BookmarkFiller& filler, std::int32_t row) const;

private:
    std::vector<std::unique_ptr<PreparedForm>> forms_;
};

} // namespace wordbm
