#include <expat.h>

#include <algorithm>
#include <memory>
#include <new>

#include "platform/linux/expat_memory.h"
#include "platform/platform.h"
#include "support/owners.h"

namespace velora_com::qel::platform {

namespace {

static_assert(sizeof(XML_Char) == 1, "Expat has to hand out UTF-8");

// What the parser may take for a document: room for its copy, and for some ten thousand levels or
// attributes even in a short one.
constexpr size_t memory_budget(size_t document_size) {
    return 4 * document_size + (size_t{4} << 20);
}

// Far below where the parser's own lengths and the budget would overflow.
constexpr size_t max_document = size_t{256} << 20;

constexpr std::string_view element_names[] = {"array", "data",    "date", "dict",   "false",
                                              "key",   "integer", "real", "string", "true"};

// Follows the parser through the document. Nothing of it is kept but the current text and the
// answers.
class Reader {
public:
    explicit Reader(const std::vector<std::string_view>& keys)
        : keys_(keys), answers_(keys.size()) {
        for (const std::string_view key : keys) {
            max_text_ = std::max(max_text_, key.size());
        }
        // The parser is a C library: nothing may be thrown through it, so all room is made here.
        text_.reserve(max_text_ + 1);
        key_.reserve(max_text_ + 1);
        for (Answer& answer : answers_) {
            answer.text.reserve(max_property_string);
        }
    }

    void start(std::string_view name) noexcept;
    void end() noexcept;
    void text(std::string_view piece) noexcept;
    void fail() noexcept { failed_ = true; }

    bool failed() const noexcept { return failed_; }
    bool complete() const noexcept { return !failed_ && dictionary_seen_; }

    std::vector<std::optional<std::string>> answers() const {
        std::vector<std::optional<std::string>> strings;
        strings.reserve(answers_.size());
        for (const Answer& answer : answers_) {
            strings.push_back(answer.found ? std::optional(answer.text) : std::nullopt);
        }
        return strings;
    }

private:
    struct Answer {
        std::string text;
        bool found = false;
    };
    enum class Item { key, string, container, other };

    void finish_item() noexcept;

    const std::vector<std::string_view>& keys_;
    std::vector<Answer> answers_;
    size_t max_text_ = max_property_string;
    std::string text_;  // of the open key or string, one byte past max_text_ when it is too long
    std::string key_;   // whose value comes next
    int depth_ = 0;     // 1 in the property list, 2 in its dictionary, 3 in a key or value of that
    Item item_ = Item::other;  // what is open at depth 3
    bool dictionary_seen_ = false;
    bool value_expected_ = false;
    bool failed_ = false;
};

void Reader::start(std::string_view name) noexcept {
    ++depth_;
    if (depth_ == 1) {
        failed_ = name != "plist";
        return;
    }
    if (depth_ == 2) {
        failed_ = name != "dict" || dictionary_seen_;
        dictionary_seen_ = true;
        return;
    }
    const bool known = std::find(std::begin(element_names), std::end(element_names), name) !=
                       std::end(element_names);
    if (!known) {
        failed_ = true;
    } else if (depth_ == 3) {
        item_ = name == "key"                       ? Item::key
                : name == "string"                  ? Item::string
                : name == "dict" || name == "array" ? Item::container
                                                    : Item::other;
        failed_ = (item_ == Item::key) == value_expected_;
        text_.clear();
    } else if (depth_ == 4) {
        failed_ = item_ != Item::container;
    }
}

void Reader::end() noexcept {
    if (depth_ == 3) {
        finish_item();
    } else if (depth_ == 2) {
        failed_ = value_expected_;
    }
    --depth_;
}

void Reader::finish_item() noexcept {
    value_expected_ = item_ == Item::key;
    if (item_ == Item::key) {
        key_.swap(text_);
        return;
    }
    for (size_t i = 0; i < keys_.size(); ++i) {
        if (keys_[i] == key_) {
            // Of equal keys the last counts.
            answers_[i].found = item_ == Item::string && text_.size() <= max_property_string;
            if (answers_[i].found) {
                answers_[i].text = text_;
            }
        }
    }
}

void Reader::text(std::string_view piece) noexcept {
    if (depth_ < 3) {
        failed_ = piece.find_first_not_of(" \t\r\n") != std::string_view::npos;
    } else if (depth_ == 3 && (item_ == Item::key || item_ == Item::string)) {
        text_.append(piece.substr(0, max_text_ + 1 - text_.size()));
    }
}

// Runs one step of the reader and ends the parse when the document turns out to be none of ours.
template <typename Step>
void advance(void* parser, Step step) noexcept {
    auto* const handle = static_cast<XML_Parser>(parser);
    auto& reader = *static_cast<Reader*>(XML_GetUserData(handle));
    if (!reader.failed()) {
        step(reader);
        if (reader.failed()) {
            XML_StopParser(handle, XML_FALSE);
        }
    }
}

void XMLCALL on_start(void* parser, const XML_Char* name, const XML_Char**) {
    advance(parser, [&](Reader& reader) { reader.start(name); });
}
void XMLCALL on_end(void* parser, const XML_Char*) {
    advance(parser, [](Reader& reader) { reader.end(); });
}
void XMLCALL on_text(void* parser, const XML_Char* piece, int length) {
    advance(parser, [&](Reader& reader) { reader.text({piece, static_cast<size_t>(length)}); });
}
// Declarations inside the document can make a small file unfold without bounds; no property list
// needs them.
void XMLCALL on_doctype(void* parser, const XML_Char*, const XML_Char*, const XML_Char*,
                        int has_declarations) {
    advance(parser, [&](Reader& reader) {
        if (has_declarations != 0) {
            reader.fail();
        }
    });
}
// An entity that is declared elsewhere would leave a gap in the text.
void XMLCALL on_unknown_entity(void* parser, const XML_Char*, int) {
    advance(parser, [](Reader& reader) { reader.fail(); });
}

}  // namespace

std::optional<std::vector<std::optional<std::string>>> property_list_strings(
    std::string_view document, const std::vector<std::string_view>& keys) {
    if (document.size() > max_document) {
        return std::nullopt;
    }
    Reader reader(keys);
    ExpatMemory memory(memory_budget(document.size()));
    const std::unique_ptr<XML_ParserStruct, support::Releaser<&XML_ParserFree>> parser(
        XML_ParserCreate_MM(nullptr, &ExpatMemory::suite(), nullptr));
    if (!parser) {
        throw std::bad_alloc();
    }
    XML_SetUserData(parser.get(), &reader);
    XML_UseParserAsHandlerArg(parser.get());
    XML_SetElementHandler(parser.get(), on_start, on_end);
    XML_SetCharacterDataHandler(parser.get(), on_text);
    XML_SetStartDoctypeDeclHandler(parser.get(), on_doctype);
    XML_SetSkippedEntityHandler(parser.get(), on_unknown_entity);
    // Given whole: of a document in pieces the parser begins a long token again with every piece.
    const XML_Status status =
        XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()), XML_TRUE);
    if (status != XML_STATUS_OK && XML_GetErrorCode(parser.get()) == XML_ERROR_NO_MEMORY &&
        !memory.exceeded()) {
        throw std::bad_alloc();
    }
    if (status != XML_STATUS_OK || !reader.complete()) {
        return std::nullopt;
    }
    return reader.answers();
}

}  // namespace velora_com::qel::platform
