// pages: draws every copy of every label of standard input into one PDF on standard output, and tells on standard error
// what each page says and what would not print as it was sent.
//
// usage: pages <FILE.zpl >FILE.pdf
#include <iostream>
#include <iterator>
#include <zplhost.hpp>

int main() {
    try {
        zpl::Desk desk({.mapsFields = true});
        desk.OnAnswer([](std::string_view bytes) { std::cerr << "answer: " << bytes << '\n'; });
        desk.Feed(std::string(std::istreambuf_iterator<char>(std::cin), {}));
        desk.Finish();
        std::vector<zpl::Page> pages;
        while (auto label = desk.NextLabel()) {
            for (unsigned copy = 0; copy < label->Copies(); ++copy) {
                pages.push_back(label->Draw(copy));
                std::cerr << pages.back().Report() << '\n';
            }
        }
        std::cerr << desk.Findings() << '\n';
        if (!pages.empty()) std::cout << zpl::Page::Pdf(pages) << std::flush;
        return pages.empty() || !std::cout ? 1 : 0;
    } catch (std::exception const& error) {
        std::cerr << "pages: " << error.what() << '\n';
        return 2;
    }
}
