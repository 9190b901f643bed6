#pragma once
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <span>
#include <utility>

namespace ombrel::test {

/// Takes settings over by their names, which raises the modified flag or not.
template <typename Set, typename Get, typename T> void TakeOver(
    T& to, T const& from, bool raises, std::initializer_list<std::pair<void (T::*)(Set), Get (T::*)() const>> settings)
{
    for (int index = 0; auto const& [set, get] : settings) {
        to.SetModified(0);
        (to.*set)((from.*get)());
        EXPECT_EQ(to.Modified() != 0, raises) << __PRETTY_FUNCTION__ << ' ' << index;
        ++index;
    }
}

/// What a component stores of its own, beyond what all components do.
inline Bytes OwnFields(Bytes const& stored)
{
    return Bytes::Of(std::span(stored.Get()).subspan(Bytes().Component(0, 0, 0, 0).Get().size()));
}

} // namespace ombrel::test
