#include "Corpora.h"

#include <string_view>
#include <unordered_set>

namespace bench {

namespace {

using std::string;
using std::string_literals::operator""s;

const char* const rooms[] = {
    "Entrance hall", "Dining room",  "Study",        "Nursery",       "Guest room",  "Shower",
    "Cloakroom",     "Landing",      "Stairwell 1",  "Stairwell 2",   "Goods lift",  "Boiler house",
    "Linen store",   "Cellar",       "Attic",        "Winter garden", "Loggia",      "Carport",
    "Tool shed",     "Wine cellar",  "Music room",   "Sauna",         "Gym",         "Print room",
    "Copy room",     "Post room",    "Cash office",  "Interview 3",   "Quiet room",  "Break-out area",
    "Tea kitchen",   "Rack room",    "UPS room",     "Battery room",  "Comms riser", "Dry riser",
    "Valve chamber", "Air handling", "Chiller yard", "Fan room",      "Ash store",   "Paint shop",
    "Cold store",    "Dispatch",     "Weighbridge",  "Gatehouse"};
const char* const parts[] = {
    "JOIST",        "TRUSS",          "SILL PLATE",  "RING BEAM", "RAFT",      "CAISSON",      "CORBEL",
    "PARAPET WALL", "DOWNSTAND",      "UPSTAND",     "TIE ROD",   "CLEAT",     "BASE PLATE",   "GUSSET",
    "STIFFENER",    "FLASHING",       "DAMP COURSE", "SOAKAWAY",  "SUMP",      "GREASE TRAP",  "VENT PIPE",
    "FLUE",         "DAMPER",         "GRILLE",      "DIFFUSER",  "BUSBAR",    "EARTH BAR",    "TRUNKING",
    "LUMINAIRE",    "SOCKET OUTLET",  "CALL POINT",  "SOUNDER",   "HOSE REEL", "FIRE CURTAIN", "SMOKE VENT",
    "CAT LADDER",   "EDGE PROTECTION"};
const char* const remarks[] = {"TYPICAL",       "NOT TO SCALE", "SEE NOTE 4", "BY OTHERS", "EXISTING",
                               "TO BE REMOVED", "PROVISIONAL",  "HOLD",       "OPP. HAND", "LEVEL VARIES"};
const char* const sections[] = {"W", "S", "HP", "MC", "TPG", "UNP", "L", "Z", "TUB"};
const char* const finishes[] = {"two coats",      "smooth finish", "to fall",          "set in mortar",
                                "bolted on site", "as existing",   "painted RAL 7016", "galvanised"};

string grouped(int value) {
    string digits = std::to_string(value);
    for (std::size_t at = digits.size(); at > 3;) {
        at -= 3;
        digits.insert(at, " ");
    }
    return digits;
}

string lower(string text) {
    for (char& c : text) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    }
    return text;
}

string dimension(Dice& dice) {
    switch (dice.below(6)) {
    case 0:
        return grouped(dice.between(30, 3000) * 5);
    case 1:
        return grouped(dice.between(30, 2500) * 5) + " mm ± " + dice.number(1, 12);
    case 2:
        return "Ø" + dice.number(6, 40) + " / " + dice.number(8, 30) + "0";
    case 3:
        return "R " + grouped(dice.between(2, 700) * 5);
    case 4:
        return dice.number(0, 359) + "°" + dice.number(0, 59, 2) + "'";
    default:
        return "1:" + dice.number(1, 50) + "0";
    }
}

string level(Dice& dice) {
    const string sign = dice.chance(75) ? "+" : "-";
    const string value = sign + dice.number(0, 70) + "." + dice.number(0, 199, 2) + "5";
    return dice.chance(40) ? "SSL " + value : value;
}

string mark(Dice& dice) {
    switch (dice.below(7)) {
    case 0:
        return dice.number(1, 60);
    case 1:
        return string(1, static_cast<char>('A' + dice.below(26)));
    case 2:
        return string(1, static_cast<char>('A' + dice.below(26))) + "." + dice.number(1, 30);
    case 3:
        return "DR " + dice.number(1, 700, 3);
    case 4:
        return "WN " + dice.number(1, 500, 3) + " " + dice.number(5, 25) + "00×" + dice.number(6, 22) + "00";
    case 5:
        return dice.number(2, 60) + " T" + dice.number(8, 40) + "-" + dice.number(1, 120, 2);
    default:
        return dice.pick(sections) + dice.number(80, 600) + "×" + dice.number(40, 300) + "×" + dice.number(4, 190);
    }
}

string caption(Dice& dice) {
    switch (dice.below(8)) {
    case 0:
        return dice.pick(rooms);
    case 1:
        return dice.pick(rooms) + " "s + dice.number(0, 9) + "." + dice.number(1, 80, 2);
    case 2:
        return dice.pick(rooms) + " "s + dice.number(3, 180) + "." + dice.number(0, 9) + " m²";
    case 3:
        return dice.pick(parts) + " "s + dice.pick(remarks);
    case 4:
        return dice.pick(parts) + " "s + static_cast<char>('A' + dice.below(6)) + dice.number(1, 150);
    case 5:
        return "DETAIL " + dice.number(1, 24) + " ON S-" + dice.number(100, 699);
    case 6:
        return dice.number(1, 30) + "0 mm " + lower(dice.pick(parts)) + ", " + dice.pick(finishes);
    default:
        return "λ = 0." + dice.number(20, 240, 3) + " W/mK";
    }
}

string label(Dice& dice) {
    const int kind = dice.between(1, 100);
    return kind <= 22 ? dimension(dice) : kind <= 32 ? level(dice) : kind <= 52 ? mark(dice) : caption(dice);
}

} // namespace

Corpus labels() {
    constexpr std::size_t count = 20000;
    // Tags and typical remarks: what is repeated is most often one of the first few hundred texts.
    constexpr std::size_t favourites = 300;
    Dice dice(2026);
    Corpus corpus;
    corpus.reserve(count);
    Corpus fresh;
    std::unordered_set<string> seen;
    while (corpus.size() < count) {
        if (fresh.size() > favourites && dice.chance(32)) {
            corpus.push_back(fresh[dice.below(dice.chance(50) ? favourites : fresh.size())]);
            continue;
        }
        string text = label(dice);
        if (seen.insert(text).second) {
            fresh.push_back(text);
            corpus.push_back(std::move(text));
        }
    }
    return corpus;
}

} // namespace bench
