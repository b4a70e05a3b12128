// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "generator/NameData.h"

const std::array<CultureText, 7> kLatinCultures{{
    // English
    {
        10,
        false,
        "Abigail Ada Adrian Agnes Aidan Alan Albert Alfie Alice Alison Amber Amy Andrew Angela Annabel Archie Arthur "
        "Ashley Audrey Austin Barry Beatrix Becky Bethany Beverly Blake Bonnie Bradley Brandon Brenda Brian Bridget "
        "Bruce Caleb Callum Cameron Carol Casey Charlotte Chelsea Chester Chloe Christopher Clara Clifford Clive "
        "Colin Connor Courtney Craig Daisy Daphne Darren Dawn Deborah Declan Dennis Derek Desmond Diane Donald Doris "
        "Dorothy Douglas Duncan Dylan Earl Edith Edward Eileen Eleanor Elliot Emily Ernest Ethan Eugene Evelyn Faith "
        "Felicity Fiona Florence Frances Freddie Gareth Gavin Gemma Geoffrey George Gerald Gillian Glenn Gloria "
        "Gordon Grace Graham Gregory Gwen Hannah Harold Harriet Harry Hazel Heather Henry Hilary Holly Howard Hugh "
        "Ian Imogen Ivy Jack Jacob James Janet Jasmine Jason Jeffrey Jennifer Jeremy Jessica Jill Joan Jocelyn Joel "
        "Jonathan Jordan Joyce Judith Justin Karen Keith Kelly Kenneth Kevin Kimberly Kirsty Kyle Lauren Leonard "
        "Leslie Lewis Lillian Linda Logan Lorraine Lucy Luke Lydia Mabel Malcolm Marcus Margaret Marjorie Martha "
        "Matthew Maureen Megan Melissa Mildred Molly Nancy Naomi Natalie Nathan Neil Nicholas Nigel Norman Olive "
        "Oliver Oscar Owen Pamela Patrick Pauline Penelope Peter Philip Phoebe Phyllis Poppy Rachel Ralph Randall "
        "Raymond Rebecca Reginald Richard Robert Robin Roderick Roger Ronald Rosemary Rowan Roy Ruby Rupert Russell "
        "Ruth Ryan Samantha Samuel Scott Shannon Sharon Shirley Sidney Simon Spencer Stacey Stanley Stephen Stuart "
        "Susan Sylvia Tabitha Tamsin Theodore Thomas Timothy Trevor Tristan Tyler Valerie Vanessa Vernon Victoria "
        "Vincent Violet Virginia Walter Wayne Wendy Wesley William Winifred Yvonne Zachary",
        "",
        "Ald Ash Barn Beck Bent Birch Black Brad Brent Broad Brook Burn Cald Cart Chal Clay Cliff Crans Cross Dal "
        "Dun East Elm Fair Farn Fen Glen Gran Green Hal Ham Hart Hath Haw Hay Hazel Hol Hunt Kel King Lang Law Lin "
        "Long Mar May Mer Mid Mil Nor Oak Old Pem Pres Quin Rad Red Ren Rush Shel Stan Stock Sut Thorn Til Wake Wal "
        "War Wes Whit Win Wood Wren",
        "ford ley ton wood field worth well brook den by ham stead shaw bourne ridge gate croft mere dale lock",
        "* Ltd|* & Sons|* Joinery|* and Partners|* Freight Lines|* Instruments|Bluewater * Surveyors|* Bakeries|"
        "* Optics Inc.|Northside * Clinic|* Legal|Little * Nursery|* Timber Co.|* Analytics",
        "Accounts|Operations|Customer Care|Purchasing|Research|Human Resources|Dispatch|Quality Assurance|Legal|"
        "Facilities|Field Service|Communications",
        "Office Manager|Head of Purchasing|Software Engineer|Site Supervisor|Pharmacist|Account Executive|Apprentice|"
        "Test Analyst|Warehouse Lead|Illustrator|Bookkeeper|Regional Director|Veterinary Nurse|Structural Engineer",
        "* Maple Street|* Orchard Lane|* Station Road|* Quarry Hill|* Old Mill Drive|* Harbour View|* Chapel Close|"
        "* Lantern Court, Flat B|* Heron Way|* Foundry Row|* Meadowsweet Avenue|* Kingfisher Crescent",
        "Met at the spring fair; asked for the long catalogue and two paper samples.|"
        "Prefers to be called after four in the afternoon, never on a Friday.|"
        "Knows the caretaker of the old mill and can arrange a visit at short notice.|"
        "Plays the cello in the same orchestra as my neighbour from the third floor.|"
        "Moved house last autumn, so the parcel service may still have the former address.|"
        "Sent the signed copies back by registered post; the originals are in the blue binder.|"
        "Allergic to walnuts, which matters for the summer party and for the hampers.|"
        "Owes us an answer about the roof; remind in the first week of next month.|"
        "Helped with the translation of the manual and should be thanked in the next edition.|"
        "Ask for the extension of the workshop, because the front desk closes at noon.|"
        "Lends out a trailer to anyone who brings it back clean and with air in the tyres.|"
        "Speaks fluent Danish and a little Welsh, and is always glad of a chance to practise.|"
        "Keep the invoice number at hand when calling, otherwise it takes half an hour.|"
        "Our children were in the same swimming class; the daughter now studies geology.",
        "United States|us|+1 %## 555-01##|(%##) 555-01##|+1-%##-555-01##|Fernvale/OR/972##|Port Lindley/WA/981##|"
        "Cedar Notch/VT/056##|Marlow Springs/TX/787##|Ashgrove/OH/432##|Lake Tamsin/MN/554##|Dunmore Falls/NY/120##\n"
        "United Kingdom|gb|+44 20 7946 0###|07700 900###|0115 496 0###|Brackenbury/Kent/ME# 4QX|"
        "Wexcombe/Devon/EX# 7TL|Thornaby Cross/Yorkshire/YO# 2PD|Glenmarrow/Fife/KY# 9HS|"
        "Lower Hatchley/Norfolk/NR# 1BW\n"
        "Canada|ca|+1 %## 555-01##|%##-555-01##|Maple Narrows/ON/K#A #B#|Saint-Aubrey/QC/H#X #L#|"
        "Port Kestrel/BC/V#T #N#\n"
        "Australia|au|+61 491 570 ###|(02) 5550 ####|Wattle Bay/NSW/2###|Coolarra/VIC/3###|Red Plains/QLD/4###\n"
        "Ireland|ie|+353 20 912 ####|Ballinreeve/Co. Cork/T## R#F#|Kilmorran/Co. Mayo/F## X#K#",
    },
    // German
    {
        4,
        false,
        "Adelheid Anke Annika Antje Armin Axel Bärbel Benno Bernd Birgit Brigitte Cornelia Detlef Dieter Dörte "
        "Edeltraud Ekkehard Elke Erwin Falk Franziska Friedrich Fritz Gerda Gerhard Gisela Gottfried Gudrun Günther "
        "Hannelore Hartmut Heike Heinrich Helga Helmut Henrike Hildegard Holger Horst Ilse Ingeborg Irmgard Jochen "
        "Jörg Jürgen Jutta Karsten Katrin Klaus Konrad Kurt Liesel Lothar Ludwig Lutz Manfred Margarete Markus "
        "Mechthild Norbert Ortrud Otto Petra Rainer Reinhard Renate Rolf Rüdiger Sabine Siegfried Sigrid Silke "
        "Stefan Steffen Susanne Swantje Thorsten Ulrich Ursula Uwe Volker Waltraud Wiebke Wilhelm Wolfgang",
        "",
        "Acker Adel Alten Bach Baum Birken Blumen Breiten Brunn Buchen Burg Dorn Eber Eichen Eisen Erlen Falken Feld "
        "Fichten Finken Forst Frei Fried Gold Grau Grün Hasel Heiden Hein Herren Hirsch Hohen Holz Kalten Kirch "
        "Klein Königs Kron Kuhl Lauter Lerchen Lichten Linden Löwen Mohr Mühl Neu Nuss Ober Reh Reichen Rosen Roth "
        "Sal Sand Schön Schwarz Silber Sommer Stein Stern Tannen Unter Vogel Wald Wasser Weiden Weiß Wiesen Winter "
        "Wolfs Ziegel",
        "au bach berg born brink brück burg dorf eck egger feld hagen hauser heim hofer holz inger kamp mann meier "
        "moser rath rieder stein tal thaler wald wieser",
        "* GmbH|* AG|* & Söhne KG|Gärtnerei *|Praxis Dr. *|* Maschinenbau GmbH|Buchhandlung *|* Spedition OHG|"
        "Steuerbüro *|* Feinmechanik|Bäckerei *",
        "Einkauf|Vertrieb|Buchhaltung|Entwicklung|Personal|Versand|Qualitätssicherung|Öffentlichkeitsarbeit|Werkstatt",
        "Sachbearbeiterin|Leiter Einkauf|Bauingenieur|Buchhalterin|Geschäftsführer|Lagerist|Tischlermeisterin|"
        "Projektleiter|Ärztin|Auszubildende|Redakteurin",
        "Lindenallee *|Am Mühlbach *|Gartenweg *|Neue Straße *|Kirchgasse *|Zur alten Schmiede *|Hasenbergstraße *|"
        "Bahnhofplatz *|Uferweg * a|Sonnenhalde *",
        "Auf der Frühjahrsmesse kennengelernt, wünscht den ausführlichen Katalog.|"
        "Am besten nach sechzehn Uhr anrufen, freitags ist das Büro nicht besetzt.|"
        "Hat den Schlüssel zum Gemeindesaal und leiht ihn gegen Quittung aus.|"
        "Schickt die Unterlagen immer per Einschreiben, bitte Eingang bestätigen.|"
        "Im August meist auf der Hütte und nur über das Festnetz zu erreichen.|"
        "Kennt sich mit alten Öfen aus und hat uns schon zweimal geholfen.|"
        "Die Rechnung geht an die Zweigstelle, nicht an die Hauptadresse oben.|"
        "Bringt zum Straßenfest Bänke mit und braucht dafür einen Anhänger.",
        "Deutschland|de|+49 30 5550 ####|0171 5550 ###|+49 (0)40 555 01##|Lindenbrück//041##|Oberwiesental//834##|"
        "Sankt Falken//796##|Moorhafen//277##|Groß Eichenau//156##\n"
        "Österreich|at|+43 1 555 0###|0664 555 0###|Sonnenkirchen//52##|Unterachtal//64##|Kaltenbrunn am See//49##\n"
        "Schweiz|ch|+41 44 555 0###|079 555 0# ##|Rosenegg/ZH/84##|Hinterfluh/BE/38##|Altmatten/GR/74##",
    },
    // French
    {
        3,
        false,
        "Adrien Agathe Aimée Alain Amandine Anaïs Antoine Apolline Arnaud Aurélie Baptiste Bastien Béatrice Benoît "
        "Blandine Brice Camille Céline Chantal Clémence Colette Corentin Damien Delphine Didier Edmond Élodie Émile "
        "Estelle Étienne Eugénie Fabrice Fanny Florian Françoise Gaël Gaspard Geneviève Ghislaine Gilles Guillaume "
        "Hélène Henri Honorine Huguette Hugo Isabelle Jacques Jérôme Josette Juliette Laurent Léon Lucie Lucien "
        "Madeleine Manon Marcel Margaux Mathilde Maxime Mireille Monique Nathalie Nicolas Noémie Océane Odile "
        "Olivier Pascal Perrine Philippe Pierre Quentin Raphaël Régis Rémi Romain Roselyne Sébastien Séverine Simone "
        "Solène Sylvain Thibault Thierry Véronique Violaine Xavier Yannick Yves Zélie",
        "",
        "Beaum Bell Boiss Bonn Brun Chamb Chast Clair Closs Court Dess Dor Dubr Fontan Gaill Garn Gerv Goss Hauter "
        "Jol Lamb Larr Lav Mall Marl Merc Mont Moul Pass Perr Pont Prev Rav Roch Rouss Sauv Tess Tour Val Vass Verd "
        "Vern Vill",
        "al ant ard as aud ault eau el elle er et ette eux ier ieu in oin on ot ou oux",
        "* et Fils|Atelier *|Cabinet *|Librairie *|* Conseil SARL|Transports *|Pâtisserie *|* Menuiserie|Domaine *|"
        "Clinique *",
        "Comptabilité|Achats|Ventes|Recherche|Ressources humaines|Expédition|Qualité|Communication",
        "Directrice financière|Ingénieur d’études|Libraire|Assistante de direction|Menuisier|Chef de chantier|"
        "Infirmière|Rédacteur|Œnologue|Comptable",
        "* rue des Tilleuls|* avenue du Vieux Port|* impasse de l’Écluse|* place du Marché|* chemin des Vignes|"
        "* boulevard de la Gare|* allée des Hêtres|* quai aux Herbes",
        "Rencontrée au salon du livre, souhaite recevoir le programme d’automne.|"
        "À rappeler en fin de journée, de préférence sur le téléphone portable.|"
        "Préfère le train à la voiture, prévoir une réunion près de la gare.|"
        "Nous a prêté la salle du premier étage pour la fête des voisins.|"
        "Envoyer les épreuves à l’ancienne adresse jusqu’à la fin du mois.|"
        "Cherche un local d’environ cent mètres carrés avec accès de plain-pied.|"
        "Son frère répare les vélos, très utile avant le départ en vacances.",
        "France|fr|+33 1 55 50 0# ##|06 55 50 ## ##|04 55 50 ## ##|Vieux-Tilleul//370##|Montbresson//694##|"
        "Port-aux-Grives//295##|La Roche-Vernay//241##|Saint-Orlin//340##\n"
        "Belgique|be|+32 2 555 0# ##|0470 55 0# ##|Hautefagne//49##|Bruyelles-le-Pont//13##",
    },
    // Spanish
    {
        3,
        false,
        "Adela Alejandro Alfonso Almudena Álvaro Amparo Andrés Ángeles Aníbal Antonia Aránzazu Arturo Asunción "
        "Beatriz Belén Benito Blanca Borja Carlota Carmen Catalina Cayetano César Consuelo Cristóbal Diego Dolores "
        "Domingo Eduardo Elvira Emiliano Encarnación Enrique Ernesto Esperanza Esteban Estrella Facundo Felipe "
        "Fermín Fernando Francisco Gabriela Gerardo Gonzalo Graciela Guadalupe Guillermo Gustavo Héctor Hernán "
        "Hortensia Ignacio Inmaculada Isidro Iván Javier Jerónimo Jimena Joaquín Jorge José Josefina Juan Julián "
        "Leandro Leticia Lourdes Lucía Luis Macarena Manuel Marisol Mateo Mercedes Miguel Montserrat Nicanor Nieves "
        "Norberto Octavio Olalla Pablo Paloma Paz Pilar Rafael Ramiro Raúl Remedios Ricardo Rocío Rodrigo Rosario "
        "Santiago Soledad Teodoro Tomás Trinidad Ximena Yolanda",
        "",
        "Aguil Alar Almend Alvar Arag Aran Barr Bermej Boh Bust Cab Calder Camp Carr Cast Cerv Cisn Cord Escal Espin "
        "Esquiv Fuent Garr Granad Herr Huert Jimen Lagun Ledesm Lob Maldon Manz Merin Mend Montalv Mor Navarr Oliv "
        "Orteg Palom Pard Pined Quintan Robl Roj Salced Santill Segov Sol Tej Terr Torr Vald Velasc Ver Zamor Zarz",
        "a al án ar as edo ejo era ero es ez illa illo ín ón ona osa oso uela uero",
        "Talleres *|* y Asociados|Librería *|Bodegas *|* Hermanos S.L.|Clínica *|Transportes * S.A.|Viveros *|"
        "Imprenta *|Estudio *",
        "Contabilidad|Compras|Ventas|Recursos humanos|Investigación|Logística|Atención al cliente|Mantenimiento",
        "Arquitecta|Jefe de taller|Administrativa|Ingeniero de obra|Profesora|Contable|Traductor|Enfermera|"
        "Directora de ventas|Diseñador",
        "Calle del Olivo *|Avenida de la Estación *|Plaza Mayor *|Camino del Molino *|"
        "Paseo de los Almendros *, 2.º B|Calle Nueva *|Ronda del Río *|Travesía del Pozo *",
        "La conocimos en la feria de primavera y quiere el catálogo completo.|"
        "Mejor llamar por la tarde, porque por la mañana está siempre en obra.|"
        "Tiene las llaves del almacén pequeño y abre también los sábados.|"
        "Nos prestó el proyector para la reunión de vecinos del año pasado.|"
        "Enviar las facturas a la oficina central y una copia a la sucursal.|"
        "Toca la guitarra y busca un grupo para ensayar los jueves por la noche.|"
        "Su hermana vive en la costa y alquila una habitación en verano.",
        "España|es|+34 955 50# ###|655 50 ## ##|Villaoliva/Sevilla/410##|Peñalara del Río/Soria/422##|"
        "Santa Almendra/Murcia/300##|Costa Zarza/Huelva/217##\n"
        "México|mx|+52 55 5550 ####|Valle Sereno/Jalisco/443##|San Nopal/Oaxaca/681##\n"
        "Argentina|ar|+54 11 5550-####|Laguna Mansa/Córdoba/51##|Tres Ombúes/Salta/44##",
    },
    // Italian
    {
        2,
        false,
        "Agostino Alessandra Alessandro Alfredo Ambrogio Angelica Annalisa Arianna Bianca Bruno Carla Carlo Caterina "
        "Chiara Cinzia Claudia Cosimo Cristiano Daniela Davide Debora Domenico Donatella Edoardo Eleonora Elisabetta "
        "Emanuele Enzo Fabio Federica Filippo Flavia Francesca Gaetano Giacomo Gianluca Giorgia Giovanni Giulia "
        "Giuseppe Graziella Ilaria Ivana Jacopo Leonardo Letizia Lorenzo Luca Luciana Luigi Marcello Marcella "
        "Martina Massimo Matteo Maurizio Michela Mirella Nicoletta Noemi Orietta Orlando Ottavia Paola Paolo "
        "Patrizia Piero Pietro Raffaella Renzo Riccardo Roberta Rocco Rosalba Sabrina Salvatore Sandro Serena "
        "Silvano Simona Stefania Tiziana Tommaso Umberto Valentina Valerio Vincenzo Vittoria Viviana",
        "",
        "Acqu Amat Anselm Bald Barb Bart Bellom Benv Bers Biagi Bonav Borg Brusc Calz Camill Capr Casal Cavall "
        "Ceccar Cest Colomb Coppol Dand Falc Faraon Ferr Fioravant Fior Forn Gall Gatt Ghib Giann Grass Guidob Lomb "
        "Luch Maff Mancin Marang Marchett Moret Nicol Pag Palmier Pell Peruzz Petrucc Piazz Ricc Rinald Rosset Sabb "
        "Santor Sart Scarp Tambur Torric Tosc Valent Venier Vitt Zanett Zucch",
        "accio aldi ani ari elli ello eri esi etti etto i ieri ini ino o oli one oni otti ucci",
        "Officine *|* & Figli|Studio *|Pasticceria *|* Impianti S.r.l.|Libreria *|Autotrasporti *|Azienda Agricola *|"
        "Farmacia *",
        "Amministrazione|Acquisti|Vendite|Ricerca|Risorse umane|Spedizioni|Qualità|Assistenza clienti",
        "Ragioniera|Responsabile acquisti|Geometra|Falegname|Insegnante|Ingegnere|Farmacista|Grafico|Direttrice|"
        "Tecnico di laboratorio",
        "Via dei Gelsi *|Piazza del Mercato *|Viale della Stazione *|Vicolo Corto *|Via Molino Vecchio *|"
        "Lungofiume Ponente *|Corso Primavera *|Strada delle Colline *",
        "Conosciuto alla fiera di primavera, vorrebbe ricevere il listino nuovo.|"
        "Meglio chiamare dopo le quattro, la mattina è quasi sempre in cantiere.|"
        "Ha prestato il furgone per il trasloco e non ha voluto niente in cambio.|"
        "Spedire i documenti alla sede vecchia almeno fino alla fine di giugno.|"
        "Suona l’organo e cerca qualcuno che lo accompagni con il violino.|"
        "Vende un ottimo miele di castagno, ordinare in tempo prima di Natale.",
        "Italia|it|+39 02 5550 ####|+39 355 550 ####|06 555 0####|Borgo Sereno/TO/100##|Castelgelso/PG/060##|"
        "Monteluce Marina/GE/161##|San Quirino al Lago/VR/370##|Pietrachiara/LE/731##",
    },
    // Nordic
    {
        2,
        false,
        "Agneta Anders Arne Asbjørn Åse Astrid Bengt Birgitta Bjarne Bjørn Bodil Britt Dag Ebba Einar Eirik Elsebeth "
        "Erik Eskil Frida Frode Gunhild Gunnar Gustaf Håkan Halvor Hanne Harald Hedvig Hjalmar Inga Ingemar Ingrid "
        "Ivar Jens Johan Jonas Jørgen Kåre Kari Karin Kerstin Kirsten Kjell Knut Lars Leif Linnea Lisbet Liv Magnus "
        "Maja Malin Marit Mattias Mette Mikkel Morten Nils Odd Ola Olof Oskar Øyvind Pernille Per Ragnhild Rasmus "
        "Roar Rune Selma Signe Sigurd Sissel Sixten Solveig Stellan Sten Sven Svein Tor Torbjörn Tove Tuva Ulf "
        "Ulrika Vidar Vilde Viggo Ylva",
        "",
        "Alm Björk Blom Dahl Ek Eng Fager Fors Gren Hag Hall Hammar Hav Hed Hell Holm Horn Ingel Kull Lill Lind "
        "Ljung Lund Malm Myr Nord Norr Ny Ode Öst Ros Rud Ryd Sjö Skog Skov Söder Strand Ström Sund Svan Tall Tor "
        "Udd Vall Vester Vik Väst Åker Ås Ög",
        "berg blad dal gren holm lund lin mark man kvist rud stad strand ström vik ås haug moen bakken gaard",
        "* AB|* & Sønner|Bageri *|* Bygg AS|Arkitektkontoret *|* Tryckeri|Advokatfirman *|* Marin AB|Trädgård *",
        "Ekonomi|Inköp|Försäljning|Utveckling|Personal|Lager|Kundtjänst|Kvalitet",
        "Ingenjör|Snickare|Lärare|Ekonom|Sjuksköterska|Bokhandlare|Arkitekt|Säljare|Avdelningschef|Elektriker",
        "Björkvägen *|Hamngatan *|Skogsstien *|Gamle Kirkevei *|Åkergränd *|Møllevangen *|Strandpromenaden *|"
        "Stationsvej *, 2. th.",
        "Träffades på vårmässan och vill gärna ha hela katalogen på papper.|"
        "Ring helst efter klockan fyra, förmiddagarna är hon ute på byggen.|"
        "Lånade ut båten i somras och vill ha tillbaka flytvästarna snart.|"
        "Har nøkkel til naustet og hjelper gjerne til når vinteren kommer.|"
        "Sælger æbler om efteråret og leverer selv, når vejret er godt.|"
        "Spelar nyckelharpa och letar efter en lokal att öva i på torsdagar.",
        "Sverige|se|+46 8 555 0## ##|070-555 0# ##|Björknäsby//114##|Norra Hamnvik//413##|Ängsfors//903##\n"
        "Norge|no|+47 55 50 ## ##|Skogvika//50##|Fagerholmen//90##\n"
        "Danmark|dk|+45 55 50 ## ##|Møllehavn//84##|Nørre Egelund//50##",
    },
    // Polish
    {
        2,
        false,
        "Agnieszka Aleksander Alicja Andrzej Aneta Antoni Arkadiusz Bartosz Beata Błażej Bogdan Bogusław Bożena "
        "Cezary Czesław Damian Danuta Dariusz Dominika Dorota Edyta Elżbieta Ewa Filip Franciszek Grażyna Grzegorz "
        "Halina Henryk Hubert Ignacy Igor Irena Iwona Jacek Jadwiga Jakub Janina Janusz Jarosław Jerzy Joanna Józef "
        "Justyna Kacper Kamil Karolina Katarzyna Kazimierz Kinga Krystyna Krzysztof Leszek Lidia Lucjan Łukasz "
        "Maciej Magdalena Małgorzata Marcin Marek Mariusz Mateusz Michalina Mieczysław Mirosław Natalia Oliwia "
        "Paulina Paweł Piotr Przemysław Radosław Roksana Ryszard Sławomir Stanisław Sylwia Szymon Tadeusz Tomasz "
        "Urszula Wacław Waldemar Wanda Weronika Wiesław Wiktoria Witold Włodzimierz Wojciech Zbigniew Zdzisława "
        "Zofia Zuzanna",
        "",
        "Bał Biel Bor Brzez Buk Chmiel Cies Czarn Czub Dąbr Dęb Dob Drozd Dud Fijał Gaj Gawr Głow Gołęb Gór Grab "
        "Grusz Jabł Jag Jan Jarz Jasi Jawor Kalin Kamin Kas Klim Kob Kocz Koł Kosz Kozi Kraw Król Krup Kuch Kul "
        "Kwiat Lew Lip Łab Łuk Majew Mazur Mich Mosz Nied Now Olsz Ostr Pal Paw Piask Pol Rat Rog Rud Rut Sad Sik "
        "Siw Sob Sok Star Stęp Szcz Szym Tarn Tom Tur Urb Was Wierz Wil Wit Woj Wol Zaj Ziel Żuk",
        "ak ał aniak ański arczyk ecki czak czyk ek eński ewicz ik iński kiewicz niak nik owicz owiak owski ski ycki "
        "yński",
        "Zakłady *|* i Wspólnicy|Księgarnia *|Piekarnia *|* Budownictwo sp. z o.o.|Kancelaria *|Drukarnia *|"
        "Gabinet *|* Transport",
        "Księgowość|Zakupy|Sprzedaż|Badania|Kadry|Wysyłka|Jakość|Obsługa klienta",
        "Księgowa|Inżynier budowy|Nauczyciel|Kierownik działu|Stolarz|Lekarka|Tłumacz|Projektantka|Magazynier|"
        "Specjalista ds. zakupów",
        "ul. Lipowa *|ul. Młyńska *|al. Klonowa *|pl. Targowy *|ul. Słoneczna * m. 4|ul. Krótka *|ul. Nadrzeczna *|"
        "os. Zielone Wzgórze *",
        "Poznaliśmy się na wiosennych targach, prosi o pełny katalog pocztą.|"
        "Najlepiej dzwonić po szesnastej, rano zwykle jest na budowie.|"
        "Ma klucze do świetlicy i chętnie pomaga przy festynie na osiedlu.|"
        "Faktury wysyłać do oddziału, nie na adres głównej siedziby firmy.|"
        "Hoduje pszczoły; miód lipowy warto zamówić jeszcze przed zimą.|"
        "Zna dobrego stolarza, który robi okna dokładnie na zamówienie.",
        "Polska|pl|+48 22 555 0# ##|555 0## ###|+48 55 550 ## ##|Lipowa Góra//05-1##|Stary Młyn//31-4##|"
        "Zielonki Dolne//60-2##|Brzozów Morski//81-3##",
    },
}};
