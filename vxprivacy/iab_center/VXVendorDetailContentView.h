#pragma once

#include <utility>

#include "vxprivacy/iab_center/DetailContentView.h"
#include "vxprivacy/iab_center/VendorRecord.h"

namespace vx {

/// What one vendor does: its policy's address and the lists of its purposes and features. To the
/// vendor screen it is the record behind a row; no screen shows it, only `displayVendorDetail`.
class VXVendorDetailContentView : public DetailContentView {
public:
    Kind kind() const override { return Kind::VendorDetail; }
    /// Leads to the vendor list, which is built anew.
    void backSelector() override;
    /// Opens the policy's address through the door `Application`.
    void policyButtonAction();

    const VendorRecord& record() const { return record_; }
    void setRecord(VendorRecord record) { record_ = std::move(record); }

private:
    void displayInformation() override;

    VendorRecord record_;
};

} // namespace vx
