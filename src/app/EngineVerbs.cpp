#include "app/EngineVerbs.h"

#include "app/InterruptStop.h"
#include "app/VerbSession.h"
#include "engine/office/OfficeConverter.h"
#include "engine/word/Document.h"
#include "support/CoreCount.h"
#include "support/FileOps.h"

#include <exception>
#include <filesystem>
#include <ostream>
#include <stdexcept>
#include <system_error>

namespace wordbm {

namespace fs = std::filesystem;

namespace {

TerminalUserInterface::Policy answeringYes(bool progressBar, bool trace = false) {
    TerminalUserInterface::Policy policy;
    policy.answer = msgbox::Yes;
    policy.progressBar = progressBar;
    policy.trace = trace;
    return policy;
}

std::string absolute(const std::string& path) {
    std::error_code error;
    const fs::path result = fs::absolute(path, error);
    return error ? path : result.lexically_normal().string();
}

// Did the command show a stop box, the window's way of saying it failed?
int exitCodeOf(VerbSession& session) {
    return session.ui().stopBoxes() > 0 ? EngineVerbs::ExitFailed : EngineVerbs::ExitFine;
}

} // namespace

std::string EngineVerbs::maskInFolder(const std::string& mask, const std::string& folder) {
    const auto separator = mask.find_last_of("\\/");
    const std::string name = separator == std::string::npos ? mask : mask.substr(separator + 1);
    return folder + "\\" + name;
}

bool EngineVerbs::sameFile(const std::string& a, const std::string& b) const {
    std::error_code error;
    if (fs::equivalent(a, b, error) && !error) {
        return true;
    }
    return absolute(a) == absolute(b);
}

int EngineVerbs::analyze(const std::string& form, bool trace) {
    VerbSession session(out_, err_, answeringYes(bar_, trace));
    if (!session.openForm(form)) {
        return ExitUnusable;
    }
    session.engine().mfWBM_Analyze();
    return exitCodeOf(session);
}

int EngineVerbs::convert(const std::string& form, const std::string& output) {
    return edit(form, output, Edit::Convert);
}

int EngineVerbs::reset(const std::string& form, const std::string& output) {
    return edit(form, output, Edit::Reset);
}

int EngineVerbs::verify(const std::string& form, const std::string& output) {
    return edit(form, output, Edit::Verify);
}

int EngineVerbs::edit(const std::string& form, const std::string& output, Edit command) {
    if (sameFile(form, output)) {
        err_ << output << "\nDie Ausgabedatei darf nicht das Word-Rechnungsformular selbst sein.\n";
        return ExitUnusable;
    }
    VerbSession session(out_, err_, answeringYes(bar_));
    if (!session.openForm(form)) {
        return ExitUnusable;
    }
    WordBM& engine = session.engine();
    switch (command) {
    case Edit::Convert:
        engine.mfWBM_Replace();
        break;
    case Edit::Reset:
        engine.mfWBM_Reset();
        break;
    case Edit::Verify:
        engine.mfWBM_Verify();
        break;
    }
    if (!saveAs(engine, output)) {
        return ExitFailed;
    }
    return exitCodeOf(session);
}

bool EngineVerbs::saveAs(WordBM& engine, const std::string& output) {
    try {
        if (!engine.Doc()) {
            throw std::runtime_error("Das Dokument ist nicht mehr geöffnet.");
        }
        engine.Doc()->SaveAs2(absolute(output));
    } catch (const std::exception& failure) {
        err_ << failure.what() << "\n" << output << "\nDie Datei wurde nicht gespeichert!\n";
        return false;
    }
    out_ << "Gespeichert: " << absolute(output) << "\n";
    return true;
}

int EngineVerbs::merge(const MergeRequest& request) {
    TerminalUserInterface::Policy policy = answeringYes(bar_);
    policy.merge = request.choices;
    VerbSession session(out_, err_, std::move(policy));
    WordBM& engine = session.engine();
    engine.Template(request.mask);
    if (!request.outFolder.empty()) {
        std::error_code error;
        fs::create_directories(request.outFolder, error);
        engine.Template(maskInFolder(engine.Template(), absolute(request.outFolder)));
    }
    if (!session.openControlFile(request.csv) || !session.openForm(request.form)) {
        return ExitUnusable;
    }
    const int jobs = request.jobs > 0 ? request.jobs : CoreCount();
    engine.MergeJobs(jobs);
    auto& converter = office::OfficeConverter::shared();
    if ((request.choices.PDF || request.choices.Print) && converter.poolSize() < jobs) {
        converter.setPoolSize(jobs);
    }
    const InterruptStop interrupt(session.ui());
    if (request.testOnly) {
        engine.mfWBM_Test();
    } else {
        engine.mfWBM_Merge();
    }
    const bool clean = engine.MergeResult().errors == 0 && !session.ui().stopRequested();
    return clean ? exitCodeOf(session) : ExitFailed;
}

} // namespace wordbm
