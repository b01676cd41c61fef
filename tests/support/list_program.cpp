// SPDX-License-Identifier: BSL-1.0

#include "list_program.hpp"

#include <array>
#include <limits>
#include <optional>
#include <utility>

namespace support {

using model::Outcome;
using model::OutcomeKind;

namespace {

/// Only a few, so that conflicts are frequent. All of them also occur as root elements.
std::vector<std::u16string> const names{u"a", u"b", u"A", u"",
                                        u"aNameThatIsTooLongToBeKeptWithinTheStringItself"};

std::array<std::u16string, 6> const rawArguments{
    u"a.b", u"b.a", u"a.*", u"b.*", u"", u"a.rawArgument.thatIsTooLong.toBeKept.withinTheString"};

std::array<std::u16string, 4> const specifiers{
    u"a", u"b@1", u"b@^1.2", u"aPackage.withAName.thatIsTooLong.toBeKept.withinTheString"};

std::array<model::Reach, 8> const otherReaches{0,
                                               0,
                                               0,
                                               2,
                                               3,
                                               -1,
                                               std::numeric_limits<model::Reach>::max(),
                                               std::numeric_limits<model::Reach>::min()};

template <typename Value, std::size_t size>
Value oneOf(std::array<Value, size> const& values, ListProgramMaker::Choice const& below) {
    return values[below(values.size())];
}

std::ostream& operator<<(std::ostream& stream, CreateStep const& step) {
    return stream << "create " << step.make << ", parent " << step.parent << " back";
}

std::ostream& operator<<(std::ostream& stream, CloneStep const& step) {
    return stream << "clone " << step.list << " back";
}

std::ostream& operator<<(std::ostream& stream, AddStep const& step) {
    return stream << "add to " << step.list << " back "
                  << (step.addition == Addition::Static ? "statically " : "dynamically ")
                  << step.entry;
}

} // namespace

std::ostream& operator<<(std::ostream& stream, ListProgram const& program) {
    stream << "other reach " << program.otherReach;
    for (ListStep const& step : program.steps) {
        std::visit([&](auto const& itsStep) { stream << '\n' << itsStep; }, step);
    }
    return stream;
}

ListProgramMaker::ListProgramMaker(Choice choice) : below(std::move(choice)) {}

ListProgram ListProgramMaker::program() {
    ListProgram result{.steps = {}, .otherReach = otherReach()};
    for (std::size_t count = below(maximalNumberOfSteps + 1); count > 0; --count) {
        result.steps.push_back(step());
    }
    return result;
}

ListStep ListProgramMaker::step() {
    std::size_t const choice = below(10);
    if (choice == 0) {
        return CloneStep{below(maximalNumberOfLists)};
    }
    if (choice < 4) {
        ListMake const itsMake = make();
        return CreateStep{itsMake, nearList()};
    }
    std::size_t const list = nearList();
    Addition const addition = below(2) == 0 ? Addition::Static : Addition::Dynamic;
    return AddStep{list, addition, entry()};
}

model::Reach ListProgramMaker::otherReach() {
    return oneOf(otherReaches, below);
}

/// Usually one of the last two, so that chains become long.
std::size_t ListProgramMaker::nearList() {
    return below(1 + below(maximalNumberOfLists));
}

ListMake ListProgramMaker::make() {
    static constexpr std::array makers{Maker::Library, Maker::Library, Maker::Delegating,
                                       Maker::Foreign};
    return {.maker = oneOf(makers, below),
            .manners = {.asksParent = below(2) == 0,
                        .namesParent = below(2) == 0,
                        .ownOrigin =
                            below(2) == 0 ? model::Origin::ThisList : model::Origin::Ancestor}};
}

Outcome ListProgramMaker::entry() {
    static constexpr std::array kinds{OutcomeKind::FullyQualified, OutcomeKind::Wildcard,
                                      OutcomeKind::Package};
    Outcome result;
    result.kind = oneOf(kinds, below);
    if (result.kind != OutcomeKind::Wildcard) {
        result.introducedName = name();
    }
    if (result.kind == OutcomeKind::Package) {
        result.specifier = oneOf(specifiers, below);
    } else {
        result.rawArgument = oneOf(rawArguments, below);
        result.rootElement = name();
    }
    return result;
}

/// Usually one of the first two.
std::u16string ListProgramMaker::name() {
    return names[below(1 + below(names.size()))];
}

ListProgramRun::ListProgramRun() {
    lists.create({}, std::nullopt);
}

void ListProgramRun::run(ListProgram const& program) {
    for (ListStep const& step : program.steps) {
        std::visit([this](auto const& itsStep) { perform(itsStep); }, step);
        lists.checkAll(names, program.otherReach);
    }
}

void ListProgramRun::perform(CreateStep const& step) {
    if (lists.size() == maximalNumberOfLists) {
        return;
    }
    if (step.parent < lists.size()) {
        lists.create(step.make, numberOf(step.parent));
    } else {
        lists.create(step.make, std::nullopt);
    }
}

void ListProgramRun::perform(CloneStep const& step) {
    if (lists.size() < maximalNumberOfLists) {
        lists.clone(numberOf(step.list));
    }
}

void ListProgramRun::perform(AddStep const& step) {
    auto const refusal = lists.add(numberOf(step.list), step.addition, step.entry);
    seenKeys.insert(refusal ? refusal->key : "");
}

std::size_t ListProgramRun::numberOf(std::size_t back) const {
    return lists.size() - 1 - back % lists.size();
}

} // namespace support
