#pragma once

#include <cstdlib>
#include <random>
#include <string>

/// The characters from one to another, both with them.
inline std::string CharacterRange(unsigned first, unsigned last) {
    std::string characters;
    for (unsigned c = first; c <= last; ++c) characters += static_cast<char>(c);
    return characters;
}

/// Runs of random alphabets, which the modes of two-dimensional symbols are made for; without the tilde.
inline std::string RandomText(std::mt19937& random, std::size_t longest) {
    static std::string const Capitals = CharacterRange('A', 'Z'), Digits = CharacterRange('0', '9');
    static std::string const Alphabets[] = {Capitals,
                                            Capitals + ".,-/ ",
                                            Capitals + Digits + "\r*> ",
                                            Digits,
                                            CharacterRange(' ', '^'),
                                            CharacterRange('a', 'z') + " ",
                                            CharacterRange(0, 125),
                                            CharacterRange(128, 255),
                                            Digits + "AB",
                                            Digits + "\xE9",
                                            CharacterRange('!', '/') + ". , : \r\n",
                                            CharacterRange(0, 31)};
    std::string text;
    std::size_t const length = 1 + random() % longest;
    for (auto const* alphabet = &Alphabets[0]; text.size() < length;) {
        if (text.empty() || random() % 12 == 0) alphabet = &Alphabets[random() % std::size(Alphabets)];
        text += (*alphabet)[random() % alphabet->size()];
    }
    return text;
}

/// How many random texts a test takes: ZPL_TEST_SYMBOLS asks for more than fit into every run.
inline int RandomTextCount(int usual) {
    char const* const wanted = std::getenv("ZPL_TEST_SYMBOLS");
    return wanted != nullptr ? std::atoi(wanted) : usual;
}
