#include "Corpora.h"

#include <array>

namespace bench {

namespace {

using std::string;
using std::string_literals::operator""s;

const char* const things[] = {"the works",
                              "every opening in a fire wall",
                              "all reinforcement",
                              "the screed",
                              "any change to these drawings",
                              "the formwork",
                              "exposed timber",
                              "each lift of brickwork",
                              "all pipework below the slab",
                              "the lightning protection",
                              "structural timber",
                              "the roofing felt",
                              "all fixings into the facade",
                              "the sample panel",
                              "stair nosings",
                              "the builder's work in connection with services",
                              "all ironmongery",
                              "the trial pit",
                              "the shop drawings",
                              "cast-in channels",
                              "the access doors",
                              "all glass at low level"};
const char* const duties[] = {"shall be agreed before work starts",
                              "must be kept dry until the roof is on",
                              "is to be read with the schedule of finishes",
                              "shall be inspected by the engineer",
                              "must not be loaded for fourteen days",
                              "is to be cleaned and primed on site",
                              "shall be replaced where damaged",
                              "has to be marked on the record drawings",
                              "is to follow the manufacturer's instructions",
                              "shall be tied to the inner leaf",
                              "must be vibrated in layers",
                              "is to be protected from frost",
                              "shall be earthed",
                              "needs a permit to work",
                              "shall be laid on a blinding of {n} mm"};
const char* const places[] = {"at every {n} mm along the wall",
                              "where shown on sheet {s}",
                              "to clause {c}",
                              "with {n} mm of cover on all faces",
                              "within {d} days of the pour",
                              "between grids {d} and {e}",
                              "unless the architect says otherwise",
                              "above the level of the highest known flood",
                              "on both sides of the joint",
                              "with a fall of not less than 1 in {e}",
                              "and a copy is to be left on site",
                              "before the scaffold is struck",
                              "for the full width of the bay",
                              "using stainless steel of grade 1.4401",
                              "so that the membrane is nowhere pierced",
                              "to a tolerance of ±{d} mm in {d} m",
                              "in the presence of the client's representative",
                              "at the contractor's own cost"};
const char* const joins[] = {"; ", ", and ", ", but ", ", provided that ", ", after which ", " while "};

// Many different words in all, as a set of drawings has them: trade words put together from parts.
const char* const heads[] = {"", "", "", "cross-", "under", "out", "fore", "back", "mid-", "self-", "counter", "up"};
const char* const stems[] = {
    "bolt",    "batten", "bush",   "caulk", "chamfer", "clamp", "clip",   "counterboard", "crimp",  "dowel",
    "drill",   "face",   "fillet", "flash", "flush",   "glue",  "groove", "hinge",        "key",    "lag",
    "latch",   "lock",   "mastic", "mesh",  "nail",    "notch", "peg",    "pin",          "plank",  "plumb",
    "prime",   "rabbet", "rake",   "scarf", "screw",   "shim",  "skim",   "solder",       "spigot", "strap",
    "stretch", "tack",   "tamp",   "taper", "thatch",  "tile",  "tongue", "truss",        "wedge",  "whip"};
const char* const tails[] = {"ed", "ing", "er", "ings", "ers", "s", "less", "work"};
const char* const nouns[] = {"angle",   "anchor", "band",   "boss",   "brace",  "cap",  "collar", "cover", "facing",
                             "ferrule", "fin",    "gland",  "guard",  "haunch", "hook", "joint",  "lug",   "muff",
                             "pad",     "plug",   "post",   "rail",   "rib",    "rod",  "saddle", "seat",  "sheet",
                             "shoe",    "skirt",  "socket", "spacer", "strip",  "stub", "tab",    "tie",   "web"};

string filled(Dice& dice, const char* pattern) {
    string text;
    for (const char* at = pattern; *at != '\0'; ++at) {
        if (*at != '{') {
            text += *at;
            continue;
        }
        switch (at[1]) {
        case 'n':
            text += dice.number(5, 320) + "5";
            break;
        case 's':
            text += dice.pick("ABCDEFGH"s) + "-"s + dice.number(100, 899);
            break;
        case 'c':
            text += dice.number(1, 30) + "." + dice.number(1, 40) + "." + dice.number(1, 12);
            break;
        case 'd':
            text += dice.number(2, 15);
            break;
        default:
            text += dice.number(20, 80);
        }
        at += 2;
    }
    return text;
}

string rareThing(Dice& dice) {
    return dice.pick(std::array{"the ", "each ", "no "}) + ""s + dice.pick(heads) + dice.pick(stems) +
           dice.pick(tails) + " " + dice.pick(nouns);
}

string clause(Dice& dice) {
    string text = dice.chance(60) ? rareThing(dice) : dice.pick(things);
    text += " "s + filled(dice, dice.pick(duties));
    if (dice.chance(80)) {
        text += " " + filled(dice, dice.pick(places));
    }
    return text;
}

string sentence(Dice& dice) {
    string text = clause(dice);
    if (dice.chance(35)) {
        text += dice.pick(joins) + clause(dice);
    }
    if (text.front() >= 'a' && text.front() <= 'z') {
        text.front() = static_cast<char>(text.front() - ('a' - 'A'));
    }
    return text + ".";
}

int wordsIn(const string& text) {
    int words = 1;
    for (const char c : text) {
        words += c == ' ' ? 1 : 0;
    }
    return words;
}

string note(Dice& dice) {
    const int wanted = dice.between(40, 72);
    string text = dice.chance(50) ? dice.number(1, 60) + ". " : "";
    text += sentence(dice);
    while (wordsIn(text) < wanted) {
        const string next = sentence(dice);
        if (wordsIn(text) + wordsIn(next) <= 80) {
            text += " " + next;
        }
    }
    return text;
}

} // namespace

Corpus notes() {
    constexpr int count = 2000;
    Dice dice(404);
    Corpus corpus;
    corpus.reserve(count);
    for (int i = 0; i < count; ++i) {
        corpus.push_back(note(dice));
    }
    return corpus;
}

} // namespace bench
