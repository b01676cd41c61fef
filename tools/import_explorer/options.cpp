// SPDX-License-Identifier: BSL-1.0
#include <import_explorer/options.hpp>

#include <import_explorer/source_file.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <string>

namespace explorer {

namespace {

using lf::import::Behavior;

constexpr char const* description =
    "Shows what the import commands of scripts mean, and reports their errors.";

// help2man generates the manual page from this text.
constexpr char const* footer = R"(Scripts consist of
  import ARGUMENT...          a command, whose imports are added to the scope that contains it
  dynamic import ARGUMENT...  the same, but added dynamically
  use NAME                    looks up NAME and shows what it means here
  scope NAME { ... }          a scope inside the enclosing one
and comments, from # or // to the end of the line. A statement ends with its line or with a semicolon.

Examples:
  import_explorer examples                 report on every script below a folder
  import_explorer --unused --fix a.import  remove what no use reaches and what repeats an import
  import_explorer --format sarif examples  report to an editor or a code host

Exit status:
  0  no errors
  1  errors in the input, or something could not be read or fixed
  2  an invalid command line, or the output could not be written
  3  out of memory)";

/// Lays the help out, since versions of CLI11 differ in this. help2man reads the result.
class HelpFormatter : public CLI::Formatter {
  public:
    std::string make_help(CLI::App const* app, std::string /*name*/,
                          CLI::AppFormatMode /*mode*/) const override {
        std::string arguments;
        std::string positionals;
        std::string options;
        for (CLI::Option const* const option : app->get_options()) {
            if (option->get_positional()) {
                arguments += ' ' + make_option_usage(option);
                positionals += make_option(option, true);
            } else {
                options += make_option(option, false);
            }
        }
        return app->get_description() + "\nUsage: " + app->get_name() + " [OPTIONS]" + arguments +
               "\n\nPositionals:\n" + positionals + "\nOptions:\n" + options + '\n' +
               app->get_footer() + '\n';
    }

    std::string make_option(CLI::Option const* option, bool isPositional) const override {
        std::string line = "  " + make_option_name(option, isPositional) + make_option_opts(option);
        std::string const nextLine = '\n' + std::string(column_width_, ' ');
        if (line.size() < column_width_) {
            line.resize(column_width_, ' ');
        } else {
            line += nextLine;
        }
        for (char const character : option->get_description()) {
            line += character == '\n' ? nextLine : std::string(1, character);
        }
        return line + '\n';
    }
};

Behavior toBehavior(std::string const& packages) {
    if (packages == "on") {
        return Behavior::WithPackageImports;
    }
    return packages == "off" ? Behavior::WithoutPackageImports : Behavior::FollowFeatureSwitch;
}

ReportFormat toFormat(std::string const& format) {
    if (format == "json") {
        return ReportFormat::Json;
    }
    return format == "sarif" ? ReportFormat::Sarif : ReportFormat::Text;
}

Notice usageError(std::string const& problem) {
    return {"import_explorer: error: " + problem + "\nRun 'import_explorer --help' for usage.\n",
            ExitStatus::Failure};
}

} // namespace

std::variant<Options, Notice> parseOptions(int argc, char const* const* argv) {
    Options options;
    std::string packages = "follow";
    std::string feature = "on";
    bool readsLines = false;
    bool writesJson = false;
    std::string format = "text";

    CLI::App app(description, "import_explorer");
    app.formatter(std::make_shared<HelpFormatter>());
    app.footer(footer);
    app.set_version_flag("--version", IMPORT_EXPLORER_VERSION, "Print the version and exit");
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.add_option("paths", options.paths,
                   "Files, folders (the *.import files below them), - for standard input")
        ->type_name("PATH");
    app.add_option(
           "--packages", packages,
           "Whether packages can be imported; 'follow', the default, asks the feature switch")
        ->check(CLI::IsMember({"on", "off", "follow"}))
        ->take_last()
        ->option_text("on|off|follow");
    app.add_option("--feature", feature, "State of the feature switch; the default is on")
        ->check(CLI::IsMember({"on", "off"}))
        ->take_last()
        ->option_text("on|off");
    CLI::Option* const scopes =
        app.add_flag("--scopes", options.showsScopes,
                     "Show what each scope imports, inherits and hides, as of the end of the file");
    CLI::Option* const unused =
        app.add_flag("--unused", options.showsUnusedImports,
                     "Warn about imports that no 'use' reaches, and about repeated ones");
    CLI::Option* const fix =
        app.add_flag("--fix", options.appliesFixes,
                     "Apply the fixes to the files, and report the remaining problems");
    app.add_flag("--lines", readsLines,
                 "Read any text: each line that begins with the word 'import' is a command, "
                 "which\nis only parsed; in folders, all files are read")
        ->excludes(scopes)
        ->excludes(unused)
        ->excludes(fix);
    CLI::Option* const formatOption =
        app.add_option("--format", format,
                       "Write text, one JSON document or, for editors and code hosts, one of\n"
                       "SARIF 2.1.0; the default is text")
            ->check(CLI::IsMember({"text", "json", "sarif"}))
            ->take_last()
            ->option_text("text|json|sarif");
    app.add_flag("--json", writesJson, "The same as --format json")->excludes(formatOption);
    app.add_flag("--quiet", options.isQuiet, "Write diagnostics and the summary only");

    try {
        app.parse(argc, argv);
    } catch (CLI::CallForHelp const&) {
        return Notice{app.help(), ExitStatus::Success};
    } catch (CLI::CallForVersion const&) {
        return Notice{app.version() + "\n", ExitStatus::Success};
    } catch (CLI::ParseError const& error) {
        return usageError(error.what());
    }
    if (options.paths.empty()) {
        return usageError("no input: name files or folders, or - for standard input");
    }
    if (options.appliesFixes && std::ranges::count(options.paths, standardInputPath) > 0) {
        return usageError("--fix changes files, so it cannot be used with standard input");
    }
    options.behavior = toBehavior(packages);
    options.isFeatureOn = feature == "on";
    options.syntax = readsLines ? SourceSyntax::Lines : SourceSyntax::Script;
    options.format = writesJson ? ReportFormat::Json : toFormat(format);
    return options;
}

} // namespace explorer
