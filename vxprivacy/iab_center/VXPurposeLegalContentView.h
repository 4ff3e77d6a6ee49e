#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "vxprivacy/iab_center/DetailContentView.h"

namespace vx {

/// The legal wording of one purpose or feature. To the purpose screen it is the record that ties
/// the item's two buttons to the item.
class VXPurposeLegalContentView : public DetailContentView {
public:
    Kind kind() const override { return Kind::PurposeDetail; }
    void backSelector() override;

    /// The button to the vendors related to the item; null until the list sets it.
    const std::shared_ptr<Button>& relatedButton() const { return relatedButton_; }
    void setRelatedButton(std::shared_ptr<Button> button) { relatedButton_ = std::move(button); }
    /// The item's offset plus its identifier, as `displayRelatedVendorsList` takes it.
    std::int32_t hashID() const { return hashID_; }
    void setHashID(std::int32_t number) { hashID_ = number; }
    /// The wording; may be missing.
    const std::optional<std::string>& textDescription() const { return textDescription_; }
    void setTextDescription(std::optional<std::string> text) { textDescription_ = std::move(text); }

private:
    void displayInformation() override;

    std::shared_ptr<Button> relatedButton_;
    std::int32_t hashID_ = 0;
    std::optional<std::string> textDescription_;
};

} // namespace vx
