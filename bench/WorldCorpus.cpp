#include "Corpora.h"

#include <array>

namespace bench {

namespace {

using std::string;

/// What sentences of one language are put together from: who, does what, when or why.
struct Language {
    std::array<const char*, 4> subjects;
    std::array<const char*, 4> verbs;
    std::array<const char*, 4> ends;
    const char* space;
    const char* stop;
};

const Language english = {{"The retaining wall along the road", "A second drain below the yard",
                           "The old boundary marked in green", "Each window facing the courtyard"},
                          {"stays as it was built in 1962", "has to be drawn again at 1:20",
                           "is shown one metre too far north", "will be opened for the inspection"},
                          {"until the neighbours have signed", "since the ground is softer there",
                           "as soon as the crane has left", "from axis B to the gable"},
                          " ",
                          "."};
const Language german = {{"Der Höhenfestpunkt vor dem Gebäude", "Die gedämmte Zwischendecke über der Küche",
                          "Das größte Fenster der Nordfassade", "Jeder zweite Pfosten im Geländer"},
                         {"wird vor Ort noch einmal gemessen", "bleibt während der Bauzeit zugänglich",
                          "liegt nun 12 cm höher als geplant", "erhält einen grauen Schutzanstrich"},
                         {"bis die Genehmigung vorliegt", "weil der Träger länger ausfällt",
                          "gemäß der Skizze vom März", "auf beiden Seiten des Flurs"},
                         " ",
                         "."};
const Language vietnamese = {
    {"Bức tường chắn phía sau nhà", "Ống thoát nước dưới sàn bếp", "Mỗi cột ở tầng hầm", "Bản thiết kế mới nhất"},
    {"được đo lại vào sáng mai", "cao hơn mức cho phép", "vẫn giữ nguyên vị trí", "cần chữ ký của chủ đầu tư"},
    {"trước khi đổ bê tông", "vì đất ở đó rất mềm", "theo yêu cầu của kiến trúc sư", "từ trục B đến trục E"},
    " ",
    "."};
const Language russian = {
    {"Подпорная стена вдоль дороги", "Вторая труба под двором", "Каждое окно северного фасада",
     "Старая граница участка"},
    {"остаётся без изменений", "нанесена на чертёж ошибочно", "будет вскрыта для осмотра",
     "поднята на 12 см выше прежней отметки"},
    {"пока не подписан акт", "поскольку грунт здесь мягче", "по эскизу от третьего марта", "от оси Б до щипца"},
    " ",
    "."};
const Language greek = {{"Ο τοίχος αντιστήριξης στον δρόμο", "Ο δεύτερος αγωγός κάτω από την αυλή",
                         "Κάθε παράθυρο της βόρειας όψης", "Το παλιό όριο του οικοπέδου"},
                        {"μένει όπως χτίστηκε το 1962", "σχεδιάζεται ξανά σε κλίμακα 1:20",
                         "βρίσκεται ένα μέτρο πιο βόρεια", "θα ανοιχτεί για έλεγχο"},
                        {"μέχρι να υπογράψουν οι γείτονες", "γιατί το έδαφος εκεί είναι μαλακό",
                         "μόλις φύγει ο γερανός", "από τον άξονα Β ως τη στέγη"},
                        " ",
                        "."};
const Language arabic = {
    {"الجدار الساند بجانب الطريق", "الأنبوب الثاني تحت الفناء", "كل نافذة في الواجهة الشمالية", "الحد القديم للأرض"},
    {"يبقى كما بني عام 1962", "يرسم مرة ثانية بمقياس 1:20", "يقع أعلى من المنسوب بقليل", "سيفتح من أجل الفحص"},
    {"حتى يوقع الجيران", "لأن التربة هناك لينة", "حسب المخطط المؤرخ في مارس", "من المحور ب إلى السقف"},
    " ",
    "."};
const Language hebrew = {
    {"קיר התמך לאורך הכביש", "הצינור השני מתחת לחצר", "כל חלון בחזית הצפונית", "הגבול הישן של המגרש"},
    {"נשאר כפי שנבנה בשנת 1962", "ישורטט שוב בקנה מידה 1:20", "נמצא מטר אחד צפונה מדי", "ייפתח לצורך בדיקה"},
    {"עד שהשכנים יחתמו", "מפני שהקרקע שם רכה", "מיד לאחר שהעגורן יעזוב", "מציר ב ועד הגמלון"},
    " ",
    "."};
const Language hindi = {
    {"सड़क के किनारे की दीवार", "आँगन के नीचे का दूसरा पाइप", "उत्तर की हर खिड़की", "ज़मीन की पुरानी सीमा"},
    {"जैसी बनी थी वैसी ही रहेगी", "एक मीटर उत्तर में दिखाई गई है", "निरीक्षण के लिए खोली जाएगी", "दोबारा नापी जाएगी"},
    {"जब तक पड़ोसी हस्ताक्षर न करें", "क्योंकि वहाँ मिट्टी नरम है", "क्रेन के जाते ही", "अक्ष ख से छत तक"},
    " ",
    "।"};
const Language thai = {{"กำแพงกันดินริมถนน", "ท่อเส้นที่สองใต้ลานบ้าน", "หน้าต่างทุกบานด้านทิศเหนือ", "แนวเขตที่ดินเดิม"},
                       {"คงไว้ตามที่สร้างไว้เดิม", "ต้องเขียนแบบใหม่อีกครั้ง", "อยู่สูงกว่าระดับที่กำหนด", "จะเปิดเพื่อการตรวจสอบ"},
                       {"จนกว่าเพื่อนบ้านจะลงนาม", "เพราะดินบริเวณนั้นอ่อน", "ทันทีที่เครนออกไป", "จากแกนบีถึงหลังคา"},
                       "",
                       " "};
const Language chinese = {{"道路旁的挡土墙", "院子下面的第二根管道", "北立面的每个窗户", "用地的旧边界"},
                          {"保持原来的样子", "按照比例重新绘制", "比图纸高出十二厘米", "将打开进行检查"},
                          {"直到邻居签字为止", "由于那里的土质较软", "等起重机离开以后", "从乙轴到山墙"},
                          "，",
                          "。"};
const Language japanese = {
    {"道路沿いの擁壁は", "中庭の下の二本目の管は", "北側の窓はすべて", "敷地の古い境界線は"},
    {"建てられた時のまま残す", "もう一度書き直す必要がある", "図面より少し高い位置にある", "検査のために開けられる"},
    {"隣の人が署名するまで", "そこの地盤が軟らかいので", "クレーンが出たらすぐに", "乙通りから妻壁まで"},
    "、",
    "。"};
const Language korean = {
    {"길을 따라 있는 옹벽은", "마당 아래의 두 번째 관은", "북쪽의 모든 창문은", "땅의 옛 경계선은"},
    {"지어진 그대로 남습니다", "다시 그려야 합니다", "도면보다 조금 높습니다", "검사를 위해 열립니다"},
    {"이웃이 서명할 때까지", "그곳의 땅이 무르기 때문에", "기중기가 떠나면 바로", "나 축에서 지붕까지"},
    " ",
    "."};

/// Ten scripts in equal shares; Latin has three languages.
const Language& ofScript(Dice& dice, std::size_t script) {
    const std::array<const Language*, 3> latin = {&english, &german, &vietnamese};
    const std::array<const Language*, 9> others = {&russian, &greek,   &arabic,   &hebrew, &hindi,
                                                   &thai,    &chinese, &japanese, &korean};
    return script == 0 ? *dice.pick(latin) : *others[script - 1];
}

string sentence(Dice& dice, const Language& language) {
    string text = string(dice.pick(language.subjects)) + language.space + dice.pick(language.verbs) + language.space +
                  dice.pick(language.ends);
    if (dice.chance(15)) {
        text += language.space + string(dice.pick(language.subjects)) + language.space + dice.pick(language.verbs);
    }
    return text + language.stop;
}

string paragraph(Dice& dice, std::size_t script) {
    constexpr std::size_t scripts = 10;
    const Language& main = ofScript(dice, script % scripts);
    string text = sentence(dice, main);
    if (dice.chance(48)) {
        for (int more = dice.between(1, 3); more > 0; --more) {
            text += " " + sentence(dice, ofScript(dice, dice.below(scripts)));
        }
    } else {
        text += " " + sentence(dice, main);
    }
    if (dice.chance(15)) {
        text += " (S-" + dice.number(100, 699) + ")";
    }
    return text;
}

} // namespace

Corpus world() {
    constexpr std::size_t count = 1000;
    Dice dice(77);
    Corpus corpus;
    corpus.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        corpus.push_back(paragraph(dice, i));
    }
    return corpus;
}

} // namespace bench
