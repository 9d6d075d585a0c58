#pragma once

#include "text/held/HeldText.h"

#include <functional>
#include <string_view>

/// Finds the partner of a brace, no further away than a stated distance, so that a step of the caret costs the same in
/// every text.
namespace BraceScan {

/// Maximum number of bytes examined.
inline constexpr qint64 Limit = 256 * 1024;

struct Match {
    enum class Kind {
        None,      ///< no brace there, or its partner may lie beyond the limit
        Pair,      ///< `brace` and `partner` match
        Unmatched  ///< the text ends before a partner is found
    };
    Kind kind = Kind::None;
    qint64 brace = -1;
    qint64 partner = -1;
};

/// Opening and closing braces by turns.
inline constexpr std::string_view Usual = "()[]{}";

/// The match of the brace at a byte. Braces for which `counts` returns false are skipped, such as those inside a
/// comment.
Match matchAt(const HeldText& text, qint64 brace, const std::function<bool(qint64 byte)>& counts,
              std::string_view braces = Usual);

}  // namespace BraceScan
