#pragma once

#include <string>
#include <string_view>

#include "vxprivacy/hosts/web/Declarations.h"
#include "vxprivacy/hosts/web/Elements.h"
#include "vxprivacy/hosts/web/HostTexts.h"
#include "vxprivacy/hosts/web/Markup.h"
#include "vxprivacy/hosts/web/StyleSheet.h"
#include "vxprivacy/platform/ui/Controls.h"

namespace vx::web {

/// Writes views as elements of a page.
class Painter {
public:
    /// `texts` must outlive this.
    explicit Painter(const HostTexts& texts) : texts_(texts) {}

    /// The screen's width and colours are looked at once, for all that is painted later.
    void beginScreen(const View& root);

    /// The element with everything in it.
    std::string whole(View& view);
    /// The element with its own text but without its subviews.
    std::string own(View& view);

    /// "2 of 3 on".
    std::string textOf(const Label::Count& count) const;

    Elements& elements() { return elements_; }
    const Elements& elements() const { return elements_; }
    StyleSheet& styles() { return styles_; }
    Colours colours() const { return colours_; }

private:
    void paint(View& view, Element& element);
    void paintLabel(const Label& label, const Element& element);
    void paintButton(const Button& button, Element& element);
    void paintAddress(std::string_view text);
    void paintSwitch(const Switch& control, const Element& element);
    void paintContainer(View& view, Element& element);
    void paintLinkedText(const Label& label);
    void paintItems(const GridPlan& plan, const Element& container);
    void place(Element& element, const GridPlan& plan, std::size_t index, bool stack,
               const Height& height);
    void begin(std::string_view tag, const View& view, const Element& element);

    const HostTexts& texts_;
    Colours colours_ = Colours::Own;
    double screenWidth_ = 0;
    bool deep_ = true;
    Elements elements_;
    StyleSheet styles_;
    Markup markup_;
};

} // namespace vx::web
