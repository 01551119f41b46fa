#include "engine/merge/PreparedForms.h"

#include "engine/merge/BookmarkFiller.h"

#include <algorithm>
#include <set>

namespace wordbm {

std::unique_ptr<PreparedForms> PreparedForms::make(word::Application& word, const std::string& workingForm,
                                                   const KnownFields& fields, BookmarkFiller& filler,
                                                   const std::string& scratchFolder,
                                                   const std::vector<std::int32_t>& rows) {
    auto forms = std::make_unique<PreparedForms>();
    std::set<std::string> tried;
    for (const std::int32_t row : rows) {
        if (tried.size() == MostShapes) {
            break;
        }
        // The first row of a shape stands for all of them.
        if (!tried.insert(filler.slipShape(row)).second) {
            continue;
        }
        auto form = PreparedForm::make(word, workingForm, fields, filler, scratchFolder, row);
        if (!form) {
            continue;
        }
        const bool servesAll = form->shape().empty();
        forms->forms_.push_back(std::move(form));
        if (servesAll) {
            break;
        }
    }
    return forms->forms_.empty() ? nullptr : std::move(forms);
}

const PreparedForm* PreparedForms::formFor(const BookmarkFiller& filler, std::int32_t row) const {
    if (forms_.size() == 1 && forms_.front()->shape().empty()) {
        return forms_.front().get();
    }
    return find(filler.slipShape(row));
}

const PreparedForm* PreparedForms::find(const std::string& shape) const {
    const auto found =
        std::find_if(forms_.begin(), forms_.end(), [&](const auto& form) { return form->serves(shape); });
    return found == forms_.end() ? nullptr : found->get();
}

} // namespace wordbm
