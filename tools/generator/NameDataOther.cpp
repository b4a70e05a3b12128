// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "generator/NameData.h"

const std::array<CultureText, 6> kOtherCultures{{
    // Bulgarian
    {
        1,
        false,
        "Ангел:angel Асен:asen Атанас:atanas Благой:blagoy Богомил:bogomil Борис:boris Боряна:boryana "
        "Валерия:valeria Ваня:vanya Васил:vasil Венета:veneta Весела:vesela Виолета:violeta Владимир:vladimir "
        "Георги:georgi Гергана:gergana Григор:grigor Дамян:damyan Даниела:daniela Десислава:desislava "
        "Димитър:dimitar Добромир:dobromir Евгения:evgenia Екатерина:ekaterina Елисавета:elisaveta Емил:emil "
        "Живко:zhivko Здравко:zdravko Златка:zlatka Ивайло:ivaylo Илиана:iliana Ирина:irina Йордан:yordan "
        "Калина:kalina Калоян:kaloyan Кирил:kiril Красимира:krasimira Кремена:kremena Лиляна:lilyana "
        "Любомир:lyubomir Людмила:lyudmila Маргарита:margarita Мартин:martin Милена:milena Младен:mladen "
        "Момчил:momchil Невена:nevena Неделчо:nedelcho Николай:nikolay Огнян:ognyan Павлина:pavlina Пламен:plamen "
        "Радослав:radoslav Радка:radka Росица:rositsa Румен:rumen Светлана:svetlana Симеон:simeon Снежана:snezhana "
        "Станимир:stanimir Стефка:stefka Стоян:stoyan Таня:tanya Тодор:todor Филип:filip Цветан:tsvetan Явор:yavor "
        "Яна:yana",
        "",
        "Ангел:angel Атанас:atanas Бойч:boych Богдан:bogdan Борис:boris Васил:vasil Велч:velch Влайк:vlayk "
        "Вълч:valch Ганч:ganch Генч:gench Димитр:dimitr Добр:dobr Драган:dragan Желязк:zhelyazk Златан:zlatan "
        "Иван:ivan Игнат:ignat Калч:kalch Камен:kamen Карадж:karadzh Кост:kost Кръст:krast Лаз:laz Лук:luk "
        "Манол:manol Марин:marin Милк:milk Мих:mih Найден:nayden Павл:pavl Панайот:panayot Пенч:pench Петр:petr "
        "Радк:radk Райч:raych Рус:rus Стан:stan Стеф:stef Стойч:stoych Тод:tod Филч:filch Христ:hrist Цан:tsan "
        "Чавд:chavd Юрук:yuruk Янк:yank",
        "ов:ov ова:ova ев:ev ева:eva енски:enski енска:enska анов:anov анова:anova инов:inov инова:inova ишки:ishki "
        "ски:ski",
        "* ООД|* и синове|Книжарница „*“|Пекарна „*“|* Строй АД|Кантора *|Аптека „*“",
        "Счетоводство|Продажби|Доставки|Личен състав|Развитие|Склад",
        "Счетоводител|Инженер|Учителка|Управител|Лекар|Преводач|Електротехник",
        "ул. „Липа“ *|бул. „Пролет“ *|ул. „Стара воденица“ *|пл. „Пазарен“ *|ул. „Речна“ *, ет. 3",
        "Запознахме се на пролетния панаир.|Да се звъни след четири часа следобед.|"
        "Помага при ремонта на старата воденица и има ключ за двора.|Предпочита писма пред разговори по телефона.",
        "България|bg|+359 2 555 0###|088 555 0###|Липово//10##|Долна Воденица//40##|Бял бряг//90##",
    },
    // Greek
    {
        1,
        false,
        "Αθηνά:athina Αικατερίνη:ekaterini Αλέξανδρος:alexandros Αναστασία:anastasia Ανδρέας:andreas "
        "Αντιγόνη:antigoni Αργυρώ:argyro Αριστείδης:aristidis Βασίλης:vasilis Γεωργία:georgia Γιάννης:giannis "
        "Γιώργος:giorgos Δανάη:danai Δέσποινα:despina Δημήτρης:dimitris Διονύσης:dionysis Ειρήνη:irini "
        "Ελευθερία:eleftheria Ελπίδα:elpida Ευάγγελος:evangelos Ευγενία:evgenia Ζωή:zoi Ηλίας:ilias Θεοδώρα:theodora "
        "Θανάσης:thanasis Ιάσονας:iasonas Ιωάννα:ioanna Καλλιόπη:kalliopi Κώστας:kostas Λευτέρης:lefteris Λήδα:lida "
        "Μαρίνα:marina Μιχάλης:michalis Μυρτώ:myrto Ναταλία:natalia Νεφέλη:nefeli Νίκος:nikos Ξένια:xenia "
        "Οδυσσέας:odysseas Όλγα:olga Παναγιώτης:panagiotis Πέτρος:petros Πηνελόπη:pinelopi Ραλλού:rallou Σοφία:sofia "
        "Σπύρος:spyros Σταύρος:stavros Στέλιος:stelios Τάσος:tasos Τριαντάφυλλος:triantafyllos Φανή:fani "
        "Φίλιππος:filippos Φωτεινή:fotini Χαρά:chara Χρήστος:christos Χρυσούλα:chrysoula",
        "",
        "Αθανασ:athanas Αλεξ:alex Αναγνωστ:anagnost Ανδρ:andr Αντων:anton Αργυρ:argyr Βασιλ:vasil Γαβρ:gavr "
        "Γεωργ:georg Γιανν:giann Δημητρ:dimitr Διαμαντ:diamant Ευαγγελ:evangel Ζαχαρ:zachar Ηλ:il Θεοδωρ:theodor "
        "Θεοφαν:theofan Ιωανν:ioann Καλογερ:kaloger Καρ:kar Κοντ:kont Κυριακ:kyriak Κωνσταντ:konstant Λαμπρ:lampr "
        "Λεοντ:leont Μαυρ:mavr Μιχαηλ:michail Νικολ:nikol Ξενοφ:xenof Οικονομ:ikonom Παναγιωτ:panagiot Παπαδ:papad "
        "Πετρ:petr Ραφτ:raft Σαββ:savv Σταμ:stam Σταυρ:stavr Στεφαν:stefan Σωτηρ:sotir Τσακ:tsak Φωτ:fot "
        "Χαραλαμπ:charalamp Χατζ:chatz Χριστ:christ",
        "όπουλος:opoulos άκης:akis ίδης:idis άδης:adis ίου:iou άκος:akos έας:eas ιάδης:iadis οπούλου:opoulou άκη:aki "
        "ίδου:idou ούδης:oudis",
        "* Α.Ε.|Αφοί *|Βιβλιοπωλείο *|Φαρμακείο *|* Τεχνική|Ζαχαροπλαστείο *",
        "Λογιστήριο|Πωλήσεις|Αγορές|Προσωπικό|Έρευνα|Αποθήκη",
        "Λογίστρια|Μηχανικός|Δασκάλα|Διευθυντής|Γιατρός|Μεταφράστρια|Ηλεκτρολόγος",
        "Οδός Ελαιώνα *|Λεωφόρος Λιμένος *|Οδός Μύλου *|Πλατεία Αγοράς *|Οδός Ανέμων *",
        "Γνωριστήκαμε στην ανοιξιάτικη έκθεση.|Καλύτερα τηλέφωνο μετά τις τέσσερις το απόγευμα.|"
        "Έχει τα κλειδιά της αποθήκης και βοηθά στο πανηγύρι.|Προτιμά τα γράμματα από το τηλέφωνο.",
        "Ελλάδα|gr|+30 21 0555 0###|695 550 ####|Νέος Ελαιώνας/Αττική/104 ##|Παλιός Μύλος/Κρήτη/712 ##|"
        "Άνω Λιμένας/Λέσβος/811 ##",
    },
    // Japanese
    {
        1,
        true,
        "愛:ai 明:aki 彩:aya 英:ei 恵:e 春:haru 光:mitsu 久:hisa 浩:hiro 一:kazu 和:kazu 健:ken 清:kiyo 真:ma 正:masa "
        "美:mi 夏:natsu "
        "直:nao 信:nobu 理:ri 里:sato 早:sa 紗:sa 静:shizu 孝:taka 友:tomo 由:yu 優:yu 結:yu 義:yoshi",
        "子:ko 美:mi 香:ka 恵:e 奈:na 代:yo 江:e 花:ka 乃:no 菜:na 太:ta 郎:ro 介:suke 之:yuki 人:to 斗:to 平:hei "
        "也:ya 男:o 彦:hiko "
        "樹:ki 生:o 夫:o 輝:teru",
        "青:ao 秋:aki 浅:asa 石:ishi 池:ike 上:ue 大:o 岡:oka 小:o 川:kawa 北:kita 黒:kuro 坂:saka 桜:sakura 佐:sa "
        "白:shira 杉:sugi "
        "高:taka 竹:take 田:ta 谷:tani 中:naka 永:naga 長:naga 西:nishi 野:no 橋:hashi 東:higashi 平:hira 広:hiro "
        "福:fuku 藤:fuji "
        "細:hoso 堀:hori 松:matsu 水:mizu 南:minami 宮:miya 村:mura 森:mori 柳:yanagi 山:yama 横:yoko 吉:yoshi",
        "井:i 江:e 岡:oka 川:kawa 木:ki 口:guchi 崎:saki 沢:sawa 島:shima 瀬:se 田:da 谷:tani 塚:tsuka 永:naga 野:no "
        "橋:hashi 浜:hama "
        "原:hara 藤:to 松:matsu 宮:miya 村:mura 本:moto 森:mori 山:yama",
        "*商店|株式会社*|*工務店|*法律事務所|*印刷|*薬局|*製作所",
        "経理部|営業部|総務部|開発部|人事部|品質管理課",
        "部長|課長|主任|看護師|設計士|教諭|編集者|店長",
        "桜台*-3|緑町*番地|若葉通り*|港町*-12|水車小路*",
        "春の展示会で知り合いました。|電話は午後四時以降が確実です。|倉庫の鍵を預かってもらっています。|"
        "書類はいつも書留で届きます。|町内会の夏祭りを手伝ってくれる人。",
        "日本|jp|+81 3-5550-####|090-5550-####|桜原市/東北県/98#-00##|港野町/西海県/81#-01##|若葉台/中央県/16#-00##",
    },
    // Chinese
    {
        1,
        true,
        "雅:ya 文:wen 思:si 佳:jia 家:jia 建:jian 志:zhi 晓:xiao 海:hai 丽:li 国:guo 欣:xin 雨:yu 梦:meng 嘉:jia "
        "俊:jun 振:zhen 玉:yu "
        "秀:xiu 天:tian 若:ruo 子:zi 宇:yu 书:shu 春:chun 立:li 庆:qing 永:yong",
        "华:hua 强:qiang 伟:wei 芳:fang 敏:min 静:jing 杰:jie 涛:tao 勇:yong 军:jun 洋:yang 艳:yan 娟:juan 辉:hui "
        "鹏:peng 琳:lin "
        "婷:ting 萍:ping 峰:feng 宁:ning 飞:fei 倩:qian 玲:ling 岚:lan",
        "王:wang 李:li 张:zhang 刘:liu 陈:chen 杨:yang 赵:zhao 黄:huang 周:zhou 吴:wu 徐:xu 孙:sun 胡:hu 朱:zhu 高:gao "
        "林:lin 何:he "
        "郭:guo 马:ma 罗:luo 梁:liang 宋:song 郑:zheng 谢:xie 韩:han 唐:tang 冯:feng 于:yu 董:dong 萧:xiao 程:cheng "
        "曹:cao 袁:yuan "
        "邓:deng 许:xu 傅:fu 沈:shen 曾:zeng 彭:peng 吕:lu 苏:su 卢:lu 蒋:jiang 蔡:cai 贾:jia 丁:ding 魏:wei 薛:xue "
        "叶:ye 阎:yan",
        "",
        "*记贸易有限公司|*氏印刷厂|*记药房|*氏律师事务所|*记书店|*氏建筑设计",
        "财务部|销售部|采购部|人事部|研发部|仓储部",
        "经理|工程师|会计|护士|教师|设计师|编辑|主任",
        "柳树街*号|新港路*号|磨坊巷*号|春风大道*号3单元|果园路*号",
        "在春季展会上认识。|下午四点以后打电话比较方便。|有仓库的钥匙，周末也开门。|喜欢写信，不太用电话。|"
        "帮忙搬过家，很热心。",
        "中国|cn|+86 10 5550 ####|155 5500 ####|柳港市/江东省/2100##|春林市/岭西省/5300##|磨石县/云北省/6500##",
    },
    // Korean
    {
        1,
        false,
        "가:ga 건:geon 경:kyung 규:kyu 기:ki 나:na 다:da 도:do 동:dong 미:mi 민:min 보:bo 상:sang 석:seok 선:sun "
        "성:sung 소:so 수:su "
        "승:seung 시:si 아:ah 연:yeon 영:young 예:ye 우:woo 유:yu 은:eun 인:in 재:jae 지:ji 태:tae 하:ha 현:hyun "
        "혜:hye",
        "구:gu 근:geun 라:ra 란:ran 림:rim 명:myung 범:beom 비:bi 빈:bin 서:seo 솔:sol 숙:sook 식:sik 아:ah 애:ae "
        "연:yeon 영:young "
        "옥:ok 완:wan 욱:wook 원:won 윤:yoon 율:yul 은:eun 인:in 정:jung 주:joo 준:jun 진:jin 찬:chan 철:chul 호:ho "
        "환:hwan 훈:hoon "
        "희:hee",
        "김:kim 이:lee 박:park 최:choi 정:jung 강:kang 조:cho 윤:yoon 장:jang 임:lim 한:han 오:oh 서:seo 신:shin "
        "권:kwon 황:hwang "
        "안:ahn 송:song 류:ryu 전:jeon 홍:hong 고:ko 문:moon 양:yang 손:son 배:bae 백:baek 허:heo 남:nam 심:shim",
        "",
        "*상사|주식회사 *|*서점|*약국|*건축사무소|*인쇄",
        "회계팀|영업부|구매팀|인사팀|연구소|물류팀",
        "과장|대리|간호사|교사|설계사|편집자|팀장",
        "벚꽃로 *|새항구길 *|물레방아길 *|은행나무로 *, 203호|봄바람길 *",
        "봄 전시회에서 만났습니다.|오후 네 시 이후에 전화하는 것이 좋습니다.|창고 열쇠를 가지고 있습니다.|서류는 항상 "
        "등기로 보냅니다.",
        "대한민국|kr|+82 2-555-####|010-5550-####|새항시/동해도/04###|은행군/남강도/61###|봄내시/서산도/31###",
    },
    // Arabic
    {
        1,
        false,
        "أحمد:ahmad إبراهيم:ibrahim أسماء:asmaa أمل:amal أيمن:ayman باسم:basim بثينة:buthaina تامر:tamer جمال:jamal "
        "جميلة:jamila حسام:husam حنان:hanan خالد:khalid خديجة:khadija دلال:dalal رانيا:rania رشيد:rashid ريم:reem "
        "زكريا:zakaria زينب:zainab سامي:sami سعاد:suad سلمى:salma سليم:salim سمير:samir شادي:shadi شيماء:shaimaa "
        "صفاء:safaa طارق:tariq عادل:adel عائشة:aisha عبير:abeer عثمان:othman عمر:omar غادة:ghada فادي:fadi "
        "فاطمة:fatima فيصل:faisal قاسم:qasim كريم:karim لطيفة:latifa ليلى:layla ماهر:maher محمود:mahmoud "
        "مروان:marwan مريم:maryam منى:mona نادية:nadia ناصر:nasser نبيل:nabil نورا:noura هاني:hani هدى:huda "
        "وائل:wael وفاء:wafaa ياسر:yasser يوسف:yousef",
        "",
        "ال:al",
        "بغدادي:baghdadi بستاني:bustani بناء:bannaa تاجر:tajir جبلي:jabali جزار:jazzar حداد:haddad حكيم:hakim "
        "حلبي:halabi خطيب:khatib خياط:khayyat دباغ:dabbagh دهان:dahhan راعي:raai رفاعي:rifai زعبي:zoubi زيات:zayyat "
        "ساعاتي:saati سالم:salem سقا:sakka شامي:shami شريف:sharif صائغ:sayegh صباغ:sabbagh صياد:sayyad طحان:tahhan "
        "طويل:tawil عامري:amiri عطار:attar عمري:omari غزالي:ghazali غواص:ghawwas فارس:fares فلاح:fallah قاضي:qadi "
        "قباني:qabbani كاتب:katib كيال:kayyal لبان:labban مالكي:maliki مغربي:maghribi مهندس:muhandis مصري:masri "
        "نجار:najjar نحاس:nahhas نقاش:naqqash هاشمي:hashimi هلالي:hilali وزان:wazzan وراق:warraq يماني:yamani",
        "شركة *|مكتبة *|صيدلية *|مخبز *|مكتب * للهندسة|مطبعة *",
        "المحاسبة|المبيعات|المشتريات|شؤون العاملين|البحوث|المخازن",
        "محاسبة|مهندس|معلمة|مدير|طبيب|مترجمة|كهربائي",
        "* شارع الزيتون|* طريق الميناء|* حارة الطاحونة|* ساحة السوق|* شارع الربيع",
        "تعرفنا عليه في معرض الربيع.|الأفضل الاتصال بعد الساعة الرابعة.|لديه مفتاح المخزن ويساعد في العيد.|"
        "يفضل الرسائل على المكالمات الهاتفية.",
        "مصر|eg|+20 2 5550 ####|010 5550 ####|مدينة الزيتون/الوادي/115##|ميناء الطاحونة/الساحل/215##\n"
        "الأردن|jo|+962 6 555 0###|عين الربيع/التلال/111##",
    },
}};

const char *const kHomeHosts =
    "quillpost|mailbarn|brightletter|postnest|inkandstamp|homeline|dovecote|lanternmail|parcelbird|tidewire|"
    "greendesk|nightowl";

const char *const kWorkHosts =
    "kestrelworks|oakline|bluewater|ferryman|stonebridge|clearpane|northlight|tinsmith|ropewalk|millrace|sundial|"
    "copperbell|haystack|brickfield|amberglass|longtable|swiftcart|plumbline|inkwell|weatherby";

const char *const kNicknames =
    "Ace|Birdie|Biscuit|Bo|Captain|Chip|Coco|Dot|Fern|Fitz|Ginger|Goldie|Jay|Junebug|Kit|Lefty|Mac|Minnow|Mouse|Nib|"
    "Patch|Peanut|Pip|Red|Scout|Skip|Sparrow|Sunny 🌻|Tuck|Wren|Ziggy|Zuzu";

const char *const kCustomLabels =
    "Boat|Front desk|Workshop|Grandparents|Summer house|Ferienhaus|Zweitbüro|Maison de campagne|Taller|Hytte|実家|Дом|"
    "العمل القديم|Parents’ place";
