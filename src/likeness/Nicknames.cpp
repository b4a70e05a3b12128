// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/Nicknames.h"

#include "likeness/Words.h"

#include <sstream>
#include <unordered_map>

namespace {

// Rows end with a semicolon. A full name first, then its short and pet forms and how other languages write it. A short
// form may stand in several rows; full names that only look alike (Daniel, Daniela) stand in rows of their own.
constexpr const char *kRows = R"(
robert bob bobby rob robbie bert roberto robin; william bill billy will willy liam wilhelm guillermo guillaume;
richard dick rick ricky rich richie ricardo riccardo; james jim jimmy jamie jaime; jacob jake jakob jacobo jakub kuba; john jack
johnny jon johan johann johannes hans hannes jan jean juan giovanni gianni nanni ivan vanya sean ian joao; jonathan jon jonny johnny
nathan; joseph joe joey josef sepp jupp pepi jose pepe chema giuseppe peppe beppe beppo yusuf jozef; francis frank francisco paco
pancho kiko francesco checco ciccio franco franz franzl francois frans frantisek; franklin frank; charles charlie chuck karl carl
carlos carlo karel; edward ed eddie ted teddy ned eduard eduardo edoardo; edmund ed eddie ted edmond; edwin ed eddie;
thomas tom tommy tomas tomasz tomek tommaso; timothy tim timmy; michael mike mick mickey michel miguel mikhail misha mischa
mikael michal mihail; david dave davy davide dawid; daniel dan danny daniil; daniela dani danielle; anthony tony
anton antonio tono tonino toni antoine antonin ton; andrew andy drew andreas andre andrei andrej andrzej andres; alexander alex
al sandy xander sasha sascha alessandro alejandro alexandre aleksandr alexandru sandro aleksander alec lex; alexandra
alex sandra sandy sasha sascha alessandra alejandra aleksandra ola lexi; albert al bert alberto adalbert; alfred al fred
freddy alfredo alf; frederick fred freddy friedrich fritz federico frederic frederik fryderyk; benjamin ben benny
benji; benedict ben benedikt benito benedetto; samuel sam sammy samuele; samantha sam sammy; matthew matt matty
matthias matteo mateo mathieu matthieu mateusz matias mats; mathilde tilda tilly matilda; christopher chris topher
christoph christophe cristobal cristoforo kit; christian chris cristian kristian; christina chris tina christine
kristina kristin cristina christa kirsten; nicholas nick nicky nico nicolas nikolaus klaus niklas nikolai nikolay
kolya nils niels claus; nicole nicky nico nicola; peter pete pedro pietro pierre piotr petr peer pekka pit;
paul pablo paolo pawel pavel paulo; patrick pat paddy patricio patrizio; patricia pat patty trish tricia patrizia;
stephen steve steven stefan stephan esteban stefano etienne stevie szczepan; stephanie steffi stefanie steph
stefania; gregory greg gregor gregorio grzegorz grigori; george georg jorge giorgio georges jurgen jorg yuri yuriy
juri jerzy georgios jiri schorsch; lawrence larry lorenz lorenzo laurent laurence lars lorenc; leonard leo len lenny
leonardo leonhard; leopold leo poldi; louis lou louie ludwig luis luigi lewis wiggerl lutz; raymond ray ramon raimund
raimondo; ronald ron ronnie; donald don donnie; gerald gerry jerry gerhard gerardo gerard gerd; jeremy jerry jeremias
jeremiah; jeffrey jeff geoff geoffrey gottfried; kenneth ken kenny; vincent vince vinnie vinzenz vincenzo vicente
enzo; victor vic viktor vittorio vitya; walter walt wally gualtiero; arthur art artie arturo artur; henry harry hank
heinrich heinz henri enrique enrico hendrik henrik quique heiner henryk; harold harry hal harald; theodore ted teddy
theo theodor teodoro fyodor fedor; philip phil pip philipp felipe philippe filippo filip; raphael rafael rafa rafe
raffaele; manuel manny manolo manu emanuel emmanuel; ignatius ignacio nacho ignaz ignazio; jesus chuy chucho; xavier
javier xaver javi; sebastian seb bastian basti sebastien sebastiano wastl; maximilian max maxi massimiliano
maximiliano; maxim max maksim maxime; maxwell max; martin marty martino martijn marten martti; mark marc marcus
markus marco marcos marek; luke lucas lukas luca luc lukasz luka; simon simeon szymon semyon; zachary zach zack zak;
joshua josh josua; nathaniel nathan nate nat; oliver ollie olli olivier oliviero; olivia livia liv livvy; dominic dom
nick dominik domenico domingo dominique; gabriel gabe; gabriela gabi gabriella gaby gabrielle gabriele; vladimir vova
volodya wladimir volodymyr wlodzimierz; dmitri dima mitya dimitri dmitry dmitriy dmytro dimitrios; eugene gene evgeny
evgeni evgeniy yevgeny yevgeniy eugen eugenio zhenya; sergei sergey serge sergio seryozha serezha serhiy; alexei alexey
alyosha aleksei aleksey alexis alexej; nikita nik; mikhailo misha; constantine costa konstantin kostya costas kostas;
elizabeth liz lizzy beth betty eliza lisa elisabeth elisabetta isabel lise elsa lilli libby bess elspeth sissi liesl
elzbieta; isabella bella isa isabelle izzy isabel; margaret maggie meg peggy margie greta gretel margarete margarita
marguerite gretchen rita marge daisy margot malgorzata margherita; mary maria mari marie molly polly maryam mariam miriam
mitzi maja marija maura; annamaria annemarie; anna ann anne annie ana ania anja anya; johanna hanna hannah joan
joanna jane jeanne juana giovanna jana hanne; katherine kate kaethe kathy katie kat kitty catherine cathy katharina kathi
katrin catarina caterina ekaterina yekaterina katya katja karin karen katarzyna kasia kaija kathryn; barbara barb
babs babsi basia barbie; susan sue susie suzy susanne susanna suzanne sanna; jennifer jen jenny jenni; rebecca becky becca rebekka; kimberly kim; amanda mandy; jacqueline jackie; jessica jess
jessie; rebecca becky becca rebekka reba; deborah deb debbie debra debora; victoria vicky tori viktoria vittoria;
veronica ronnie vroni veronika nika; theresa terry tess tessa teresa therese resi tere; dorothy dot dottie dolly
dorothea dora doro thea; eleanor ellie nell nora eleonora leonora elena elinor lenore; helen helena nell ellen helene
elena yelena lena leni ilona; magdalena lena magda maddy madeleine leni madeline madalena; caroline carrie carol
carolina karoline karolina lina caro; charlotte lottie charly lotte carlotta; josephine josie jo josefine fina
giuseppina josefa; abigail abby gail; emily emma em emilia milly emilie; amelia amy millie amalia; alice ali alicia
alicja alix; cynthia cindy; pamela pam; sophia sophie sofia sonia sonja zofia sofie; natalia natalie natasha natalya nathalie
natascha natalya; tatiana tanya tania tatjana; olga olya; irene irina ira irena; eva eve evi ewa evita; ursula uschi
ulla urszula; gertrude trudy gerti gertrud; brigitte gitte birgit brigitta bridget biddy brigida; angela angie
angelika angelica geli; martina tina; valentina tina valya; bettina tina betti; ferdinand ferdi fernando nando
fernand hernando; rudolf rudi rodolfo rudolph; wolfgang wolf wolfi; siegfried sigi siggi; gunther gunter guenter
gunnar; dietrich dieter; bernhard bernd bernie bernard bernardo; reinhard reiner rainer; eberhard ebi hardy; ulrich
uli ulrik; joachim jochen achim joaquin; tobias tobi toby; concepcion concha conchita; dolores lola; guadalupe lupe
lupita; rosario charo rosa; mercedes merche; pilar pili; enriqueta queta henriette harriet hattie; mohammed mohamed mohamad mo
muhammad mehmet memo mohammad muhammed; ahmed ahmad ahmet; ibrahim abraham abe brahim; yusef yusuf yousef youssef; ali;
fatima fatma; omar umar omer; hassan hasan; hussein husain hossein huseyin; ruben reuben; rene; stanislav stan stas
stanislaw staszek; boleslaw bolek; wojciech wojtek; agnes agnieszka aga ines; malgorzata gosia; beata beate bea; beatrice bea
beatriz trixi beatrix; kristof krzysztof krzysiek christoph; susanne sanne; lucia lucy lucie luzia; julia julie juliet giulia
yulia julija; julian jules julien; julius jules giulio julio; laura lauren laure; claudia claudette claudine; claude
claudio claudius klaudiusz; monica monika mona; ruth; sarah sara sally; rachel rachele raquel; lea leah; clara claire
klara chiara clare; erik eric erich; kevin kev; brian bryan; alan allan allen; hugo hugh ugo; leon lion; paula paola;
mario; silvia sylvia sylvie; silvio silvius; ricarda; stella estelle; tim; kim; mia; zoe; nina; lara; sven; oskar
oscar; emil emilio emile; amber; chloe; ella; noah; ethan; felix; jonas jonah; finn; jason; ryan; justin; tyler;
aaron; petra; manuela; andrea; simone simona; michelle michele; frances fran francesca franziska franzi francoise fanny;
anita; nancy; louise luisa louisa lou; fabian fabio fabien; fabienne fabiana; adrian adriano adrien; adrienne adriana;
marian mariano; marianne mariana; marcel marcello marcelo; marcella marcelle marcela; georgia georgina; friederike rike;
wilhelmine wilhelmina minna
)";

struct Table
{
    std::unordered_map<std::string, std::vector<int>> rows;
    std::vector<std::string> heads;
};

const Table &table()
{
    static const Table made = [] {
        Table all;
        std::istringstream rows(kRows);
        for (std::string row; std::getline(rows, row, ';');) {
            const int number = static_cast<int>(all.heads.size());
            std::istringstream names(row);
            for (std::string name; names >> name;) {
                auto &rowsOfName = all.rows[formOf(name)];
                if (rowsOfName.empty() || rowsOfName.back() != number)
                    rowsOfName.push_back(number);
                if (static_cast<int>(all.heads.size()) == number)
                    all.heads.push_back(formOf(name));
            }
        }
        return all;
    }();
    return made;
}

} // namespace

const std::vector<int> *nicknameRows(const std::string &form)
{
    const auto found = table().rows.find(form);
    return found == table().rows.end() ? nullptr : &found->second;
}

const std::string &headOfNicknameRow(int row)
{
    return table().heads[static_cast<std::size_t>(row)];
}
