// Prints a model for people: a line a field, sets as ranges.

#include "tools/tc/ModelTable.h"

#include <array>
#include <iomanip>
#include <ostream>
#include <string>
#include <string_view>

#include "tools/tc/Time.h"
#include "vxprivacy/services/iab/Layout.h"

namespace vx::tools::tc {

namespace {

using namespace services::tcf;

constexpr int kIndent = 2;
constexpr int kNameWidth = 30;
constexpr std::size_t kValueWidth = 68;

std::string rangesIn(const IdentifierSet& set) {
    std::string text;
    set.forEachRange([&](std::uint32_t first, std::uint32_t last) {
        text += (text.empty() ? "" : " ") + std::to_string(first);
        if (last != first)
            text += '-' + std::to_string(last);
    });
    return text.empty() ? "none" : text;
}

std::string_view meaningOf(Restriction::Type type) {
    constexpr std::array<std::string_view, 3> meanings = {"not allowed", "consent required",
                                                          "legitimate interest required"};
    return meanings[type];
}

// Visits the fields of a segment and prints them; what is long goes on under its beginning.
class Printer {
public:
    Printer(std::string_view segment, std::ostream& output) : output_(output) {
        output << segment << '\n';
    }

    void number(std::string_view field, unsigned, std::uint32_t value) {
        line(field, std::to_string(value));
    }
    void time(std::string_view field, std::uint64_t value) { line(field, tc::asText(value)); }
    void flag(std::string_view field, bool value) { line(field, value ? "yes" : "no"); }
    void letters(std::string_view field, const std::string& value) { line(field, value); }
    void identifiers(std::string_view field, unsigned, const IdentifierSet& set) {
        line(field, rangesIn(set));
    }
    void vendors(std::string_view field, const VendorSection& section) {
        line(field,
             std::to_string(section.vendors.size()) + " of " + std::to_string(section.maxVendorId));
        if (!section.vendors.empty())
            line("", rangesIn(section.vendors));
    }
    void restrictions(std::string_view field, const Restrictions& restrictions);

private:
    void line(std::string_view name, std::string_view value);

    std::ostream& output_;
};

void Printer::restrictions(std::string_view field, const Restrictions& restrictions) {
    if (restrictions.empty())
        line(field, "none");
    for (const auto& [restriction, vendors] : restrictions) {
        line(field, "purpose " + std::to_string(restriction.purpose) + ", " +
                        std::string(meaningOf(restriction.type)) + ":");
        line("", rangesIn(vendors));
        field = "";
    }
}

void Printer::line(std::string_view name, std::string_view value) {
    while (!value.empty()) {
        const std::size_t blank = value.rfind(' ', kValueWidth);
        const bool fits = value.size() <= kValueWidth || blank == std::string_view::npos;
        output_ << std::string(kIndent, ' ') << std::left << std::setw(kNameWidth) << name
                << value.substr(0, fits ? value.size() : blank) << '\n';
        value.remove_prefix(fits ? value.size() : blank + 1);
        name = "";
    }
}

void printVendors(std::string_view segment, const std::optional<VendorSection>& section,
                  std::ostream& output) {
    if (section)
        Printer(segment, output).vendors("Vendors", *section);
}

} // namespace

void printTable(const TCModel& model, std::ostream& output) {
    Printer core("Core", output);
    visitCore(core, model);
    printVendors("DisclosedVendors", model.disclosedVendors, output);
    printVendors("AllowedVendors", model.allowedVendors, output);
    if (model.publisherTC) {
        Printer publisher("PublisherTC", output);
        visitPublisherTC(publisher, *model.publisherTC);
    }
}

} // namespace vx::tools::tc
