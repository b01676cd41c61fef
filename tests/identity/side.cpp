// SPDX-License-Identifier: BSL-1.0
#include "side.hpp"

#include "foreign_list.hpp"

#include <import/import.hpp>

#include <boost/exception_ptr.hpp>

#include <exception>
#include <memory>
#include <utility>

namespace {

using identity::ForeignList;
using identity::List;
using identity::Side;
using identity::Thrower;
using lf::import::IImportList;
using EmptyHolder = resource_core::GenericMsgIDHolder::EmptyGenericMsgIDHolder;
using InvalidSpecifier =
    foundation::core::except::Exception<kpm::arguments::InvalidPackageSpecifier, std::exception>;

constexpr auto withAncestors = IImportList::CheckAncestorList::Yes;

void throwEmptyHolder() {
    lf::import::InvalidImportEntry moved(resource_core::BaseMsgID{});
    lf::import::InvalidImportEntry const taken(std::move(moved));
    static_cast<void>(moved.isWarning());
}

void throwInvalidSpecifier() {
    lf::import::PackageImportEntry const entry(
        lf::import::PackageNameImportArgument{u"no package"});
}

template <typename Exception>
bool isCaughtAs(Thrower thrower) {
    try {
        thrower();
    } catch (Exception const&) {
        return true;
    } catch (...) {
    }
    return false;
}

bool catchEmptyHolderFromBoost(Thrower thrower) {
    boost::exception_ptr copy;
    try {
        thrower();
    } catch (...) {
        copy = boost::current_exception();
    }
    try {
        boost::rethrow_exception(copy);
    } catch (EmptyHolder const&) {
        return true;
    } catch (...) {
    }
    return false;
}

bool catchEmptyHolderFromExceptionPointer(Thrower thrower) {
    std::exception_ptr pointer;
    try {
        thrower();
    } catch (...) {
        pointer = std::current_exception();
    }
    try {
        std::rethrow_exception(pointer);
    } catch (EmptyHolder const&) {
        return true;
    } catch (...) {
    }
    return false;
}

List filled(std::shared_ptr<IImportList> list) {
    list->addStaticImportEntry(
        lf::import::PackageImportEntry(lf::import::PackageNameImportArgument{u"p"}));
    return list;
}

List makeForeignList() {
    return filled(std::make_shared<ForeignList>());
}

List makeList() {
    return filled(lf::import::createImportList(nullptr));
}

bool isForeign(List const& list) {
    auto const child = lf::import::createImportList(list);
    return dynamic_cast<ForeignList const*>(list.get()) != nullptr &&
           dynamic_cast<ForeignList const*>(child->getParent().get()) == list.get();
}

bool isSeenInside(List const& list) {
    auto const child = lf::import::createImportList(list);
    auto const found = child->findPackageImportEntry(u"p", withAncestors);
    return found && found->entry.getIntroducedName() == u"p" &&
           child->getNumberOfEntries(withAncestors) == 1;
}

} // namespace

extern "C" GLEIGEM_EXPORT Side const* identity_side() {
    static constexpr Side side{
        .throwEmptyHolder = throwEmptyHolder,
        .throwInvalidSpecifier = throwInvalidSpecifier,
        .catchEmptyHolder = isCaughtAs<EmptyHolder>,
        .catchEmptyHolderAsStandardException = isCaughtAs<std::exception>,
        .catchEmptyHolderFromBoost = catchEmptyHolderFromBoost,
        .catchEmptyHolderFromExceptionPointer = catchEmptyHolderFromExceptionPointer,
        .catchInvalidSpecifier = isCaughtAs<InvalidSpecifier>,
        .catchInvalidSpecifierAsStandardException = isCaughtAs<std::exception>,
        .makeForeignList = makeForeignList,
        .makeList = makeList,
        .isForeign = isForeign,
        .isSeenInside = isSeenInside,
    };
    return &side;
}
