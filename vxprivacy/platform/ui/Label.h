#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "vxprivacy/platform/foundation/CodePoints.h"
#include "vxprivacy/platform/foundation/Export.h"
#include "vxprivacy/platform/ui/View.h"

namespace vx {

/// How letters look.
struct VXPRIVACY_EXPORT Font {
    /// A face ("TrebuchetMS-Bold"), or "system" for the platform's own.
    std::string name = "system";
    double size = 17; ///< points

    friend bool operator==(const Font&, const Font&) = default;
};

/// A piece of text that the user reads. Plain text: a host shows every character as it is and takes
/// nothing in it for markup.
class VXPRIVACY_EXPORT Label : public View {
public:
    /// `Natural`: as the user's language runs. `Justified`: both edges straight.
    enum class Alignment { Natural, Justified };

    /// Words of the text that lead somewhere. They only look like it: what a tap does is the tap
    /// recogniser's business, which hears which character was tapped.
    struct Link {
        CodePointRange range;   ///< the words
        Colour colour;          ///< of their letters
        bool underlined = true; ///< as links are

        friend bool operator==(const Link&, const Link&) = default;
    };

    /// So many of all the switches that the label heads.
    struct Count {
        std::size_t on = 0;  ///< switches that are on
        std::size_t all = 0; ///< all of them

        friend bool operator==(const Count&, const Count&) = default;
    };

    Kind kind() const override { return Kind::Label; }

    /// UTF-8; may have line breaks.
    const std::string& text() const { return text_; }
    void setText(std::string text) { set(text_, std::move(text)); }
    // Font and colour; absent: the platform's.
    const std::optional<Font>& font() const { return font_; }
    void setFont(Font font) { set(font_, std::optional(std::move(font))); }
    const std::optional<Colour>& textColor() const { return colour_; }
    void setTextColor(const Colour& colour) { set(colour_, std::optional(colour)); }
    /// How many lines are shown at most; 0: as many as the text needs. 1 unless told otherwise.
    std::int32_t numberOfLines() const { return lines_; }
    void setNumberOfLines(std::int32_t lines) { set(lines_, lines); }
    /// `Natural` unless told otherwise.
    Alignment alignment() const { return alignment_; }
    void setAlignment(Alignment alignment) { set(alignment_, alignment); }
    /// Absent unless told otherwise. It stays where it is when the text changes.
    const std::optional<Link>& link() const { return additions().link; }
    void setLink(const std::optional<Link>& link) {
        if (link != this->link())
            set(ownAdditions().link, link);
    }
    /// The rank of a heading: 1 for that of the screen, 2 of a section, 3 of an item; 0: a text.
    std::int32_t headingLevel() const { return headingLevel_; }
    void setHeadingLevel(std::int32_t level) { set(headingLevel_, level); }
    /// Absent where there is nothing to count. A host shows it beside the text.
    const std::optional<Count>& count() const { return additions().count; }
    void setCount(const Count& count) {
        set(ownAdditions().count, std::optional(count),
            this->count() ? ViewChange::What::State : ViewChange::What::Properties);
    }

private:
    // What few labels have, of the thousands that a screen has.
    struct Additions {
        std::optional<Link> link;
        std::optional<Count> count;
    };

    const Additions& additions() const {
        static const Additions none;
        return additions_ ? *additions_ : none;
    }
    Additions& ownAdditions() {
        if (!additions_)
            additions_ = std::make_unique<Additions>();
        return *additions_;
    }

    std::string text_;
    std::optional<Font> font_;
    std::optional<Colour> colour_;
    std::int32_t lines_ = 1;
    Alignment alignment_ = Alignment::Natural;
    std::int32_t headingLevel_ = 0;
    std::unique_ptr<Additions> additions_;
};

} // namespace vx
