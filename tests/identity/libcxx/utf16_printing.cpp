// SPDX-License-Identifier: BSL-1.0

/// \file
/// Prints entries to UTF-16 streams of a standard library that has no std::ctype<char16_t>, and so
/// no fill character. Prints a line for each check; fails if one does.

#include <import/import.hpp>

#include <algorithm>
#include <iostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>

namespace {

using Stream = std::basic_ostringstream<char16_t>;
using Adjustment = std::ios_base& (*)(std::ios_base&);

int numberOfFailures = 0;

void check(char const* why, bool holds) {
    numberOfFailures += holds ? 0 : 1;
    std::cout << (holds ? "holds: " : "FAILS: ") << why << '\n';
}

lf::import::FullyQualifiedImportEntry const& name() {
    static lf::import::FullyQualifiedImportEntry const entry(
        {.rootElement = u"a", .introducedName = u"b", .rawArgument = u"a.b", .warning = {}});
    return entry;
}

std::u16string printed(std::streamsize width, Adjustment adjust) {
    Stream stream;
    stream.setf(std::ios_base::fmtflags());
    adjust(stream);
    stream.width(width);
    stream << name();
    check("the width is spent", stream.width() == 0);
    return stream.str();
}

/// Accepts only this many units.
class ShortBuffer : public std::basic_streambuf<char16_t> {
  public:
    explicit ShortBuffer(std::streamsize units) : capacity(units) {}

  protected:
    std::streamsize xsputn(char16_t const* /*text*/, std::streamsize size) override {
        return std::min(size, capacity);
    }

  private:
    std::streamsize capacity;
};

struct Refusal {};

/// Accepts nothing and throws an exception instead.
class ThrowingBuffer : public std::basic_streambuf<char16_t> {
  protected:
    std::streamsize xsputn(char16_t const* /*text*/, std::streamsize /*size*/) override {
        throw Refusal();
    }
};

std::ios_base::iostate stateAfterPrintingTo(std::streamsize units) {
    ShortBuffer buffer(units);
    std::basic_ostream<char16_t> stream(&buffer);
    stream << name();
    return stream.rdstate();
}

void checkPadding() {
    check("no width, no blanks", printed(0, std::right) == u"a.b");
    check("as wide as the text, no blanks", printed(3, std::right) == u"a.b");
    check("wider, blanks before it", printed(5, std::right) == u"  a.b");
    check("wider, blanks before it by default", printed(5, std::internal) == u"  a.b");
    check("wider to the left, blanks after it", printed(5, std::left) == u"a.b  ");
}

void checkStates() {
    using std::ios_base;
    check("a stream that accepts everything stays good",
          stateAfterPrintingTo(3) == ios_base::goodbit);
    check("a stream that accepts less goes bad",
          stateAfterPrintingTo(2) == (ios_base::failbit | ios_base::badbit));

    Stream failed;
    failed.setstate(ios_base::failbit);
    failed.width(7);
    failed << name();
    check("a failed stream gets nothing", failed.str().empty());
    check("and keeps its width", failed.width() == 7);
}

void checkExceptions() {
    using std::ios_base;
    ThrowingBuffer buffer;
    std::basic_ostream<char16_t> quiet(&buffer);
    quiet << name();
    check("a buffer's exception makes the stream bad", quiet.rdstate() == ios_base::badbit);

    std::basic_ostream<char16_t> loud(&buffer);
    loud.exceptions(ios_base::badbit);
    bool passedOn = false;
    try {
        loud << name();
    } catch (Refusal const&) {
        passedOn = true;
    }
    check("and is passed on if the stream is to throw",
          passedOn && loud.rdstate() == ios_base::badbit);
}

void checkAlias() {
    using Oxtavel::KeldarComponents::GetComponentVersionRangeFactory;
    using Oxtavel::KeldarComponents::PackageSpecifier;
    lf::import::PackageImportEntry package(lf::import::VersionedPackageImportArgument{
        PackageSpecifier(u"matrix@2", GetComponentVersionRangeFactory())});
    Stream own;
    own << package;
    check("a package is printed as its specifier", own.str() == u"matrix@2");
    Stream renamed;
    renamed << lf::import::PackageImportEntry(std::move(package),
                                              lf::import::PackageNameImportArgument{u"m"});
    check("and with its alias", renamed.str() == u"matrix@2 as m");
}

} // namespace

int main() {
    checkPadding();
    checkStates();
    checkExceptions();
    checkAlias();
    return numberOfFailures == 0 ? 0 : 1;
}
