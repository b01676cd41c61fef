# Copies and comparisons that the compiler writes need no words of ours.
/const&\)( noexcept)? = default;$/s/.*//
