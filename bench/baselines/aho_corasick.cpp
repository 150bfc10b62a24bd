#include "baselines/aho_corasick.h"

#include <array>

namespace baselines {
namespace {

class Automaton {
public:
    explicit Automaton(const std::vector<std::string>& codes) {
        for (const std::string& code : codes) {
            for (const char c : code) {
                std::uint32_t& letter = m_letters[static_cast<unsigned char>(c)];
                letter = letter == 0 ? ++m_width : letter;
            }
        }
        ++m_width; // letter 0: any other byte
        addState();
        for (std::uint32_t i = 0; i < codes.size(); ++i) {
            insert(codes[i], i);
        }
        link();
    }

    template <typename Visit>
    void scan(const std::string& text, Visit&& visit) const {
        std::uint32_t state = 0;
        for (const char c : text) {
            state = m_next[state * m_width + m_letters[static_cast<unsigned char>(c)]];
            for (std::uint32_t s = m_codes[state].empty() ? m_output[state] : state; s != 0; s = m_output[s]) {
                for (const std::uint32_t code : m_codes[s]) {
                    visit(code);
                }
            }
        }
    }

private:
    std::uint32_t addState() {
        m_next.resize(m_next.size() + m_width, 0);
        m_codes.emplace_back();
        return static_cast<std::uint32_t>(m_codes.size() - 1);
    }

    void insert(const std::string& code, std::uint32_t position) {
        std::uint32_t state = 0;
        for (const char c : code) {
            const std::size_t edge = state * m_width + m_letters[static_cast<unsigned char>(c)];
            if (m_next[edge] == 0) {
                const std::uint32_t added = addState();
                m_next[edge] = added;
            }
            state = m_next[edge];
        }
        m_codes[state].push_back(position);
    }

    // Breadth first: a state's failure is known before its children's.
    void link() {
        std::vector<std::uint32_t> failure(m_codes.size(), 0);
        m_output.assign(m_codes.size(), 0);
        std::vector<std::uint32_t> queue;
        for (std::uint32_t letter = 0; letter < m_width; ++letter) {
            if (m_next[letter] != 0) {
                queue.push_back(m_next[letter]);
            }
        }
        for (std::size_t i = 0; i < queue.size(); ++i) {
            const std::uint32_t state = queue[i];
            const std::uint32_t fallback = failure[state];
            m_output[state] = m_codes[fallback].empty() ? m_output[fallback] : fallback;
            for (std::uint32_t letter = 0; letter < m_width; ++letter) {
                std::uint32_t& next = m_next[state * m_width + letter];
                const std::uint32_t other = m_next[fallback * m_width + letter];
                if (next == 0) {
                    next = other;
                } else {
                    failure[next] = other;
                    queue.push_back(next);
                }
            }
        }
    }

    std::array<std::uint32_t, 256> m_letters{};
    std::uint32_t m_width = 0;
    std::vector<std::uint32_t> m_next;
    std::vector<std::uint32_t> m_output; // the next state with codes along the failures
    std::vector<std::vector<std::uint32_t>> m_codes;
};

} // namespace

std::vector<std::pair<std::uint32_t, std::uint32_t>> ahoCorasick(const std::vector<std::string>& codes,
                                                                 const std::vector<std::string>& names) {
    const Automaton automaton(codes);
    std::vector<std::vector<std::uint32_t>> namesOf(codes.size());
    for (std::uint32_t name = 0; name < names.size(); ++name) {
        automaton.scan(names[name], [&](std::uint32_t code) {
            if (namesOf[code].empty() || namesOf[code].back() != name) {
                namesOf[code].push_back(name);
            }
        });
    }
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs;
    for (std::uint32_t code = 0; code < codes.size(); ++code) {
        for (const std::uint32_t name : namesOf[code]) {
            pairs.emplace_back(code, name);
        }
    }
    return pairs;
}

} // namespace baselines
