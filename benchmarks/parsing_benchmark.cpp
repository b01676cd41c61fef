// SPDX-License-Identifier: BSL-1.0

// The cost of a command, per argument: classification alone, which is creating a parser, and
// classification with parsing. Both include destroying the parser.

#include "floors/copied_command.hpp"
#include "measurement.hpp"
#include "subjects.hpp"
#include "workload.hpp"

#include <model/parser_model.hpp>
#include <support/observed_entries.hpp>

#include <import/argument_parser.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace benchmarks {

namespace {

using lf::import::Behavior;
using Texts = std::vector<std::u16string>;

// Short texts fit into a string object, long ones do not.
enum class Length : std::uint8_t { Short, Long };

std::u16string drawIdentifier(workload::Draws& draws, Length length) {
    std::size_t const size = length == Length::Short ? 3 : 16 + draws.below(16);
    std::u16string text;
    do {
        text.clear();
        while (text.size() < size) {
            text += static_cast<char16_t>(u'a' + draws.below(26));
        }
    } while (lfu::isReservedWord(text, 8));
    return text;
}

// The form of all arguments of a command. In a pattern, `a` stands for an identifier.
struct Form {
    std::string_view name;
    Behavior grammar;
    std::u16string_view shortPattern;
    std::u16string_view longPattern;
    std::optional<floors::Form> floor;
};

constexpr auto newGrammar = Behavior::WithPackageImports;
constexpr auto legacyGrammar = Behavior::WithoutPackageImports;

constexpr auto forms = std::to_array<Form>({
    {"fully_qualified", newGrammar, u"a.a", u"a.a.a", floors::Form::FullyQualified},
    {"wildcard", newGrammar, u"a.*", u"a.a.*", floors::Form::Wildcard},
    {"package", newGrammar, u"a", u"a", floors::Form::Package},
    {"versioned_package", newGrammar, u"a@^1", u"a@>=1.2.3,<2", floors::Form::VersionedPackage},
    {"as", newGrammar, u"as", u"as", {}},
    {"ignored", newGrammar, u"", u"", {}},
    {"invalid", newGrammar, u"1.a", u"a.1.a", {}},
    {"keyword", newGrammar, u"a.for", u"a.a.for", {}},
    {"invalid_package", newGrammar, u"a@", u"a@>=1.2.3,,<2", {}},
    {"legacy_fully_qualified", legacyGrammar, u"a.a", u"a.a.a", floors::Form::LegacyFullyQualified},
    {"legacy_wildcard", legacyGrammar, u"a.*", u"a.a.*", floors::Form::Wildcard},
    {"legacy_ignored", legacyGrammar, u"", u"", {}},
    {"legacy_keyword_warning", legacyGrammar, u"a.for", u"a.a.for", {}},
    {"legacy_malformed_warning", legacyGrammar, u"1.*", u"a.1.*", {}},
    {"legacy_without_dot", legacyGrammar, u"a", u"a", {}},
});

Texts drawArguments(Form const& form, Length length, std::size_t count) {
    workload::Draws draws;
    Texts texts(count);
    for (std::u16string& text : texts) {
        for (char16_t const unit : length == Length::Short ? form.shortPattern : form.longPattern) {
            text += unit == u'a' && form.name != "as" ? drawIdentifier(draws, length)
                                                      : std::u16string(1, unit);
        }
    }
    return texts;
}

// The commands of one form: what to measure and the expected result.
struct Subject {
    Form form;
    Length length;
    std::size_t count;

    std::string name(std::string_view stage, std::string_view contestant) const {
        return std::string(stage) + '_' + std::string(form.name) +
               (length == Length::Short ? "/short/" : "/long/") + std::string(contestant) +
               "/arguments:" + std::to_string(count);
    }

    Texts texts() const { return drawArguments(form, length, count); }

    void check(std::vector<lf::import::ParsedImportEntry> const& entries) const {
        require(support::observe(entries) ==
                    model::parseCommand(texts(), form.grammar == newGrammar),
                name("parse", "?"));
    }
};

void classifyByGleigem(benchmark::State& state, Subject const& subject) {
    Texts const texts = subject.texts();
    subject.check(createImportArgumentParser(texts, subject.form.grammar)->parse());
    Measurement measurement(state);
    for ([[maybe_unused]] auto _ : state) {
        auto const parser = createImportArgumentParser(texts, subject.form.grammar);
        benchmark::DoNotOptimize(parser.get());
    }
    measurement.report(texts.size());
}

void parseByGleigem(benchmark::State& state, Subject const& subject) {
    Texts const texts = subject.texts();
    subject.check(createImportArgumentParser(texts, subject.form.grammar)->parse());
    Measurement measurement(state);
    for ([[maybe_unused]] auto _ : state) {
        auto const parser = createImportArgumentParser(texts, subject.form.grammar);
        benchmark::DoNotOptimize(parser->parse().data());
    }
    measurement.report(texts.size());
}

void classifyByFloor(benchmark::State& state, Subject const& subject) {
    Texts const texts = subject.texts();
    subject.check(floors::CopiedCommand(texts, *subject.form.floor).copyEntries());
    Measurement measurement(state);
    for ([[maybe_unused]] auto _ : state) {
        auto const command = std::make_unique<floors::CopiedCommand>(texts, *subject.form.floor);
        benchmark::DoNotOptimize(command.get());
    }
    measurement.report(texts.size());
}

void parseByFloor(benchmark::State& state, Subject const& subject) {
    Texts const texts = subject.texts();
    subject.check(floors::CopiedCommand(texts, *subject.form.floor).copyEntries());
    Measurement measurement(state);
    for ([[maybe_unused]] auto _ : state) {
        auto const command = std::make_unique<floors::CopiedCommand>(texts, *subject.form.floor);
        benchmark::DoNotOptimize(command->copyEntries().data());
    }
    measurement.report(texts.size());
}

void parseByModel(benchmark::State& state, Subject const& subject) {
    Texts const texts = subject.texts();
    Measurement measurement(state);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(model::parseCommand(texts, subject.form.grammar == newGrammar));
    }
    measurement.report(texts.size());
}

void registerSubject(Subject const& subject) {
    auto const addStage = [&subject](std::string_view stage, std::string_view contestant,
                                     void (*measure)(benchmark::State&, Subject const&)) {
        add(subject.name(stage, contestant),
            [=](benchmark::State& state) { measure(state, subject); });
    };
    addStage("classify", "gleigem", classifyByGleigem);
    addStage("parse", "gleigem", parseByGleigem);
    addStage("parse", "model", parseByModel);
    if (subject.form.floor) {
        addStage("classify", "copied_texts", classifyByFloor);
        addStage("parse", "copied_texts", parseByFloor);
    }
}

} // namespace

void registerParsing() {
    for (Form const& form : forms) {
        bool const isMeasuredAtAllSizes = form.name.ends_with("fully_qualified");
        for (Length const length : {Length::Short, Length::Long}) {
            if (length == Length::Long && form.shortPattern == form.longPattern &&
                form.floor == std::nullopt) {
                continue; // the same texts once more
            }
            for (std::size_t const count : {1, 10, 100, 1'000, 10'000}) {
                if (isMeasuredAtAllSizes || count == 100) {
                    registerSubject({form, length, count});
                }
            }
        }
    }
}

} // namespace benchmarks
