#include "fields/data/ClockNames.h"

#include <algorithm>
#include <iterator>

namespace {

// clang-format off
constexpr ClockNames Languages[] = {
    {"en", {"January", "February", "March", "April", "May", "June", "July", "August", "September", "October", "November", "December"},
           {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"}},
    {"es", {"enero", "febrero", "marzo", "abril", "mayo", "junio", "julio", "agosto", "septiembre", "octubre", "noviembre", "diciembre"},
           {"domingo", "lunes", "martes", "miércoles", "jueves", "viernes", "sábado"}},
    {"fr", {"janvier", "février", "mars", "avril", "mai", "juin", "juillet", "août", "septembre", "octobre", "novembre", "décembre"},
           {"dimanche", "lundi", "mardi", "mercredi", "jeudi", "vendredi", "samedi"}},
    {"de", {"Januar", "Februar", "März", "April", "Mai", "Juni", "Juli", "August", "September", "Oktober", "November", "Dezember"},
           {"Sonntag", "Montag", "Dienstag", "Mittwoch", "Donnerstag", "Freitag", "Samstag"}},
    {"it", {"gennaio", "febbraio", "marzo", "aprile", "maggio", "giugno", "luglio", "agosto", "settembre", "ottobre", "novembre", "dicembre"},
           {"domenica", "lunedì", "martedì", "mercoledì", "giovedì", "venerdì", "sabato"}},
    {"nb", {"januar", "februar", "mars", "april", "mai", "juni", "juli", "august", "september", "oktober", "november", "desember"},
           {"søndag", "mandag", "tirsdag", "onsdag", "torsdag", "fredag", "lørdag"}},
    {"pt", {"janeiro", "fevereiro", "março", "abril", "maio", "junho", "julho", "agosto", "setembro", "outubro", "novembro", "dezembro"},
           {"domingo", "segunda-feira", "terça-feira", "quarta-feira", "quinta-feira", "sexta-feira", "sábado"}},
    {"sv", {"januari", "februari", "mars", "april", "maj", "juni", "juli", "augusti", "september", "oktober", "november", "december"},
           {"söndag", "måndag", "tisdag", "onsdag", "torsdag", "fredag", "lördag"}},
    {"da", {"januar", "februar", "marts", "april", "maj", "juni", "juli", "august", "september", "oktober", "november", "december"},
           {"søndag", "mandag", "tirsdag", "onsdag", "torsdag", "fredag", "lørdag"}},
    {"nl", {"januari", "februari", "maart", "april", "mei", "juni", "juli", "augustus", "september", "oktober", "november", "december"},
           {"zondag", "maandag", "dinsdag", "woensdag", "donderdag", "vrijdag", "zaterdag"}},
    {"fi", {"tammikuu", "helmikuu", "maaliskuu", "huhtikuu", "toukokuu", "kesäkuu", "heinäkuu", "elokuu", "syyskuu", "lokakuu", "marraskuu", "joulukuu"},
           {"sunnuntai", "maanantai", "tiistai", "keskiviikko", "torstai", "perjantai", "lauantai"}},
    {"ja", {"1月", "2月", "3月", "4月", "5月", "6月", "7月", "8月", "9月", "10月", "11月", "12月"},
           {"日曜日", "月曜日", "火曜日", "水曜日", "木曜日", "金曜日", "土曜日"}},
    {"ko", {"1월", "2월", "3월", "4월", "5월", "6월", "7월", "8월", "9월", "10월", "11월", "12월"},
           {"일요일", "월요일", "화요일", "수요일", "목요일", "금요일", "토요일"}},
    {"zh", {"一月", "二月", "三月", "四月", "五月", "六月", "七月", "八月", "九月", "十月", "十一月", "十二月"},
           {"星期日", "星期一", "星期二", "星期三", "星期四", "星期五", "星期六"}},
    {"ru", {"январь", "февраль", "март", "апрель", "май", "июнь", "июль", "август", "сентябрь", "октябрь", "ноябрь", "декабрь"},
           {"воскресенье", "понедельник", "вторник", "среда", "четверг", "пятница", "суббота"}},
    {"pl", {"styczeń", "luty", "marzec", "kwiecień", "maj", "czerwiec", "lipiec", "sierpień", "wrzesień", "październik", "listopad", "grudzień"},
           {"niedziela", "poniedziałek", "wtorek", "środa", "czwartek", "piątek", "sobota"}},
};
// clang-format on

}  // namespace

ClockNames const& FindClockNames(std::string_view culture) {
    auto const found = std::find_if(std::begin(Languages), std::end(Languages),
                                    [&](ClockNames const& names) { return names.language == culture.substr(0, 2); });
    return found == std::end(Languages) ? Languages[0] : *found;
}
