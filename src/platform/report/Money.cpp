#include "platform/report/ReportFile.h"

namespace report {

namespace {

void leaveOut(List& list);

void leaveOut(Section& section) {
    std::erase_if(section, [](const SectionPart& part) {
        const auto* band = std::get_if<Band>(&part);
        return band && band->money;
    });
    for (SectionPart& part : section) {
        if (auto* band = std::get_if<Band>(&part))
            std::erase_if(band->elements, [](const Element& element) { return element.money; });
        else
            leaveOut(*std::get<std::unique_ptr<List>>(part));
    }
}

void leaveOut(List& list) {
    for (Group& group : list.groups) {
        leaveOut(group.header);
        leaveOut(group.footer);
    }
    for (Section* section : {&list.header, &list.detail, &list.footer, &list.none})
        leaveOut(*section);
}

} // namespace

void leaveOutMoney(ReportFile& file) {
    leaveOut(file.body);
    leaveOut(file.pageHeader);
    leaveOut(file.pageFooter);
}

} // namespace report
