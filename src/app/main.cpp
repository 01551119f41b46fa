#include "app/BatchCheck.h"
#include "app/BatchSlip.h"
#include "app/ClassicCommand.h"
#include "app/EngineVerbs.h"
#include "app/FormInspection.h"
#include "app/Version.h"
#include "settings/IniSettingsStore.h"
#include "ui/DesktopSession.h"
#include "ui/GermanQtTexts.h"

#include <CLI/CLI.hpp>
#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

std::string versionText() {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%02d.%02d.%03d - %s", wordbm::version::Major,
                  wordbm::version::Minor, wordbm::version::Revision, wordbm::version::ReleaseDate);
    return std::string(wordbm::version::Title) + " " + buffer;
}

// What the verbs were given; CLI11 writes into it while parsing.
struct VerbOptions {
    std::string csv;
    std::string png;
    std::string form;
    int row = 0;
    bool text = false;
    bool json = false;
    std::string out;
    bool trace = false;
    wordbm::EngineVerbs::MergeRequest merge;
    wordbm::SlipChoices slip;
    bool noReceipt = false;
    bool noPaymentPart = false;
    bool noSeparator = false;
    bool keep = false;
    int exitCode = 0;
};

wordbm::EngineVerbs engineVerbs() {
    return wordbm::EngineVerbs(std::cout, std::cerr, ::isatty(STDERR_FILENO) == 1);
}

void addCheck(CLI::App& app, VerbOptions& options) {
    auto* check =
        app.add_subcommand("check", "List the QR-bill warnings of every invoice row of a control file");
    check->add_option("--csv", options.csv, "CSV control file")->required();
    check->callback(
        [&options] { options.exitCode = wordbm::BatchCheck(std::cout, std::cerr).check(options.csv); });
}

void addQrcode(CLI::App& app, VerbOptions& options) {
    auto* qrcode = app.add_subcommand("qrcode", "Write the QR code or the payload of one invoice row");
    qrcode->add_option("--csv", options.csv, "CSV control file")->required();
    qrcode->add_option("--row", options.row, "data line, counted from 1")->required();
    qrcode->add_option("--png", options.png, "write the QR code as PNG to this file");
    qrcode->add_flag("--text", options.text, "print the payload bytes exactly (the default without --png)");
    qrcode->callback([&options] {
        options.exitCode =
            wordbm::BatchCheck(std::cout, std::cerr)
                .qrcode(options.csv, options.row, options.png, options.text || options.png.empty());
    });
}

void addInspect(CLI::App& app, VerbOptions& options) {
    auto* inspect =
        app.add_subcommand("inspect", "List every story of a form with its bookmarks, fields and shapes");
    inspect->add_option("form", options.form, "Word form (.docx or .docm)")->required();
    inspect->add_flag("--json", options.json, "print JSON instead of text");
    inspect->callback([&options] {
        options.exitCode = wordbm::FormInspection(std::cout, std::cerr).run(options.form, options.json);
    });
}

void addAnalyze(CLI::App& app, VerbOptions& options) {
    auto* analyze =
        app.add_subcommand("analyze", "Count the export fields, bookmarks and merge fields of a form");
    analyze->add_option("form", options.form, "Word form (.docx or .docm)")->required();
    analyze->add_flag("--trace", options.trace, "also print the walk through the form's stories");
    analyze->callback([&options] { options.exitCode = engineVerbs().analyze(options.form, options.trace); });
}

// convert, reset and verify: a command on a working copy of the form, saved to --out.
template <typename Command>
void addEdit(CLI::App& app, VerbOptions& options, const std::string& name, const std::string& description,
             Command command) {
    auto* edit = app.add_subcommand(name, description);
    edit->add_option("form", options.form, "Word form (.docx or .docm); it is never written")->required();
    edit->add_option("--out", options.out, "where the edited form is saved")->required();
    edit->callback([&options, command] {
        auto verbs = engineVerbs();
        options.exitCode = (verbs.*command)(options.form, options.out);
    });
}

void addMerge(CLI::App& app, VerbOptions& options) {
    auto& request = options.merge;
    auto* merge = app.add_subcommand("merge", "Make one invoice per row of the control file from the form");
    merge->add_option("--form", request.form, "Word form (.docx or .docm)")->required();
    merge->add_option("--csv", request.csv, "CSV control file")->required();
    merge->add_option("--template", request.mask,
                      "file-name mask, e.g. \"&W&\\&K&-&D&-&R&-Rechnung.&E&\" (default: the remembered one)");
    merge->add_option("--out", request.outFolder,
                      "folder for the invoices (the mask's file-name part is kept)");
    merge->add_flag("--pdf", request.choices.PDF, "export every invoice as PDF");
    merge->add_flag("--pdfa", request.choices.PDFA, "make the PDF files PDF/A-1 (implies --pdf)");
    merge->add_flag("--print", request.choices.Print, "print every invoice");
    merge->add_flag("--close", request.choices.Close, "close every invoice once it is done");
    merge->add_flag("--delete", request.choices.Delete,
                    "delete the saved invoice documents (implies --close)");
    merge->add_flag("--test", request.testOnly, "only list the names the invoices would get");
    merge->add_option("--jobs", request.jobs, "invoices made side by side (default: one per core)")
        ->check(CLI::Range(1, 64));
    merge->callback([&options] {
        auto& chosen = options.merge.choices;
        chosen.PDF = chosen.PDF || chosen.PDFA;
        options.exitCode = engineVerbs().merge(options.merge);
    });
}

void addInsertSlip(CLI::App& app, VerbOptions& options) {
    auto* insert = app.add_subcommand("insert-slip", "Lay the QR-bill payment part into a form");
    insert->add_option("form", options.form, "Word form (.docx or .docm); it is never written")->required();
    insert->add_option("--out", options.out, "where the form with the payment part is saved")->required();
    insert->add_option("--lang", options.slip.language, "language of the headings")
        ->check(CLI::IsMember({"Deutsch", "Französisch", "Italienisch", "Englisch"}));
    insert->add_flag("--no-receipt", options.noReceipt, "leave the receipt out");
    insert->add_flag("--no-payment-part", options.noPaymentPart, "leave the payment part out");
    insert->add_flag("--no-separator", options.noSeparator, "leave the separation text out");
    insert->add_flag("--borders", options.slip.fieldBorders, "draw the borders of the fields");
    insert->add_flag("--keep", options.keep, "keep the drawing canvases the form already has");
    insert->callback([&options] {
        auto& slip = options.slip;
        slip.ET = !options.noReceipt;
        slip.ZT = !options.noPaymentPart;
        slip.ST = !options.noSeparator;
        slip.deleteExisting = !options.keep;
        options.exitCode = wordbm::BatchSlip(std::cout, std::cerr).insert(options.form, options.out, slip);
    });
}

// The first arguments that belong to the batch verbs; anything else is the classic line.
bool isVerb(int argc, char** argv) {
    if (argc < 2) {
        return false;
    }
    for (const char* verb : {"check", "qrcode", "inspect", "analyze", "convert", "reset", "verify", "merge",
                             "insert-slip", "--version"}) {
        if (std::strcmp(argv[1], verb) == 0) {
            return true;
        }
    }
    return false;
}

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::string(value) : std::string();
}

// A Wayland compositor listens on a socket in the runtime folder (or at an absolute path).
bool waylandAnswers() {
    const std::string display = environment("WAYLAND_DISPLAY");
    if (display.empty()) {
        return false;
    }
    const std::string socket =
        display.front() == '/' ? display : environment("XDG_RUNTIME_DIR") + "/" + display;
    struct stat status {};
    return ::stat(socket.c_str(), &status) == 0 && S_ISSOCK(status.st_mode);
}

// A DISPLAY left over from a closed session names no server: Qt would abort on it.
bool x11Answers() {
    if (environment("DISPLAY").empty()) {
        return false;
    }
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

// Qt cannot start without a display; the help text then goes to the terminal instead of a box.
// A platform that needs no server (offscreen, minimal) is taken as it is.
bool displayAvailable() {
    const std::string platform = environment("QT_QPA_PLATFORM");
    if (!platform.empty() && !platform.starts_with("xcb") && !platform.starts_with("wayland")) {
        return true;
    }
    return waylandAnswers() || x11Answers();
}

// Every verb and its options, laid out so that help2man makes a section of each.
std::string verbsHelp(const CLI::App& verbs) {
    const auto all = verbs.get_subcommands([](const CLI::App*) { return true; });
    std::string text = "Verbs (run without window; wordbm VERB --help tells the options of one):\n";
    constexpr std::size_t Column = 20;
    for (const CLI::App* verb : all) {
        const std::string& name = verb->get_name();
        text += "  " + name + std::string(name.size() < Column ? Column - name.size() : 2, ' ') +
                verb->get_description() + "\n";
    }
    text += "\nOptions:\n"
            "  --version                   print the program's version and end\n";
    const CLI::Formatter format;
    for (const CLI::App* verb : all) {
        text += "\nOptions of " + verb->get_name() + ":\n";
        for (const CLI::Option* option : verb->get_options()) {
            if (option != verb->get_help_ptr()) {
                text += format.make_option(option, option->get_positional());
            }
        }
    }
    return text;
}

// The help on a terminal: the help box's text, what the switches do, and every verb with its
// options. The manual page wordbm(1) is made from this text.
void printTerminalHelp(const char* argv0, const CLI::App& verbs) {
    std::string text = wordbm::ClassicCommand::helpText(wordbm::ClassicCommand::programName(argv0));
    for (auto at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at)) {
        text.erase(at, 1);
        ++at;
    }
    std::cout
        << text << "\n\n"
        << "Switches (open the window with these):\n"
           "  /w <word-file>   the Word invoice form (.docx or .docm)\n"
           "  /c <csv-file>    the CSV control file of the billing run\n"
           "  /t <template>    the file-name mask of the invoices, e.g. \"&W&\\&K&-&D&-&R&-Rechnung.&E&\"\n"
           "  /m               open the window on its merge page\n"
           "  /?               show this help (also -?, -h, --help)\n"
           "A switch may also begin with \"-\"; a value with blanks goes in double quotes.\n\n"
        << verbsHelp(verbs);
}

int windowRun(int argc, char** argv, const CLI::App& verbs) {
    const wordbm::ClassicCommand command = wordbm::ClassicCommand::read(argc, argv);
    const bool display = displayAvailable();
    if (command.help && !display) {
        printTerminalHelp(argv[0], verbs);
        return 0;
    }
    if (!display) {
        std::cerr << "wordbm: no display; start it on a desktop, or use a batch verb: check, qrcode, "
                     "inspect, analyze, convert, reset, verify, merge, insert-slip\n";
        return 2;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QString::fromLatin1(wordbm::version::Title));
    // The icon of the installed desktop entry; the entry's name lets Wayland docks match the window.
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("wordbm")));
    QGuiApplication::setDesktopFileName(QStringLiteral("wordbm"));
    wordbm::GermanQtTexts::install();
    if (command.help) {
        QMessageBox box(QMessageBox::NoIcon, QString::fromLatin1(wordbm::version::Title),
                        QString::fromStdString(
                            wordbm::ClassicCommand::helpText(wordbm::ClassicCommand::programName(argv[0]))),
                        QMessageBox::Ok);
        box.exec();
        return 0;
    }
    wordbm::DesktopSession session(std::make_shared<wordbm::IniSettingsStore>());
    auto& engine = session.engine();
    // Set in this order whatever order the line had: the mask, the control file, the form.
    engine.Template(command.Template);
    engine.CSVDoc(command.CSVDoc);
    engine.WordDoc(command.WordDoc);
    engine.Execute(command.mergePage);
    return 0;
}

int run(int argc, char** argv);

} // namespace

// Whatever escapes the program's own handling ends it with a plain message, never an abort.
int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "wordbm: Unerwarteter Fehler: " << error.what() << '\n';
    } catch (...) {
        std::cerr << "wordbm: Unerwarteter Fehler\n";
    }
    return 2;
}

namespace {

// The verbs are defined first, since the window's help on a terminal lists them too.
int run(int argc, char** argv) {
    CLI::App app{"WordBM: bookmarks, merge and Swiss QR-bill for Word invoice forms", "wordbm"};
    app.set_version_flag("--version", versionText());
    VerbOptions options;
    addCheck(app, options);
    addQrcode(app, options);
    addInspect(app, options);
    addAnalyze(app, options);
    addEdit(app, options, "convert", "Turn every known merge field of a form into a bookmark",
            &wordbm::EngineVerbs::convert);
    addEdit(app, options, "reset", "Delete every known merge field of a form", &wordbm::EngineVerbs::reset);
    addEdit(app, options, "verify", "Put every bookmark text of a form in brackets",
            &wordbm::EngineVerbs::verify);
    addMerge(app, options);
    addInsertSlip(app, options);
    if (!isVerb(argc, argv)) {
        return windowRun(argc, argv, app);
    }
    CLI11_PARSE(app, argc, argv);
    return options.exitCode;
}

} // namespace
