-- The thirteen conditions in SQL, on tables with a row for each value.
SELECT 'SingleName', uid FROM person
WHERE (firstName IS NULL) <> (lastName IS NULL) AND coalesce(flags, 0) <> 1;

SELECT 'DupAddress', uid FROM person WHERE id IN (
    SELECT person FROM address
    GROUP BY person, street, city, state, zip, country, countryCode HAVING count(*) > 1);

SELECT 'InvalidChar', uid FROM person
WHERE id IN (SELECT person FROM email WHERE instr(value, '@') = 0 OR instr(value, '.com') = 0)
   OR id IN (SELECT person FROM phone WHERE value GLOB '*[A-Za-z]*');

SELECT 'SpaceInFirstName', uid FROM person WHERE instr(firstName, ' ') > 0;

WITH shared AS MATERIALIZED (
    SELECT value, min(person) AS first FROM email GROUP BY value HAVING count(DISTINCT person) > 1)
SELECT 'ShareEmail', searched.uid, other.uid,
    (SELECT label FROM email AS e WHERE e.person = shared.first AND e.value = shared.value)
FROM email AS o CROSS JOIN shared ON shared.value = o.value AND shared.first <> o.person
JOIN person AS searched ON searched.id = shared.first
JOIN person AS other ON other.id = o.person;

SELECT 'DuplicateContacts', uid FROM person WHERE id IN (
    SELECT min(id) FROM person
    GROUP BY coalesce(firstName, '(null)') || coalesce(lastName, '(null)') HAVING count(*) > 1);

SELECT 'EmptyNotes', uid FROM person WHERE length(note) > 0 AND trim(note, ' ') = '';

SELECT 'EmptyNickname', uid FROM person WHERE length(nickname) > 0 AND trim(nickname, ' ') = '';

SELECT 'DupPhone', uid FROM person WHERE id IN (
    SELECT person FROM phone GROUP BY person, value HAVING count(*) > 1);

SELECT 'DupEmail', uid FROM person WHERE id IN (
    SELECT person FROM email GROUP BY person, value HAVING count(*) > 1);

SELECT 'UnusualTitle', uid FROM person WHERE title IS NOT NULL AND title NOT IN (
    '1LT', '1lt', '1ST', '1st', '2LT', '2lt2ND', '2nd', '3RD', '3rd', 'Adm', 'adm', 'Admiral', 'admiral', 'Cardinal',
    'cardinal', 'Capt', 'capt', 'Captain', 'captain', 'CDR', 'cdr', 'Chief', 'chief', 'Col', 'col', 'Colonel',
    'colonel', 'Count', 'count', 'Cpt', 'cpt', 'Doctor', 'doctor', 'Dr', 'dr', 'Gen', 'gen', 'Gerneral', 'gerneral',
    'LCDR', 'lcdr', 'Lord', 'lord', 'Lt', 'lt', 'LTG', 'ltg', 'LTJG', 'ltjg', 'Maj', 'maj', 'Major', 'major', 'MG',
    'mg', 'Mr', 'mr', 'Mrs', 'mrs', 'Ms', 'ms', 'Pastor', 'pastor', 'Prof', 'prof', 'Professor', 'professor', 'Rep',
    'rep', 'Reverend', 'reverend', 'Sen', 'sen', 'Senator', 'senator', 'Sir', 'sir');

SELECT 'UnusualSuffix', uid FROM person WHERE suffix IS NOT NULL AND suffix NOT IN (
    '2nd', '2ND', '3rd', '3RD', '4th', '4TH', '5th', '5TH', '6th', '6TH', 'BA', 'ba', 'DDS', 'dds', 'ESQ', 'esq', 'I',
    'II', 'III', 'IV', 'IX', 'Jr', 'jr', 'Junior', 'junior', 'MA', 'ma', 'MD', 'md', 'MS', 'ms', 'PhD', 'phd', 'Sr',
    'sr', 'V', 'VI', 'VII', 'VIII', 'X');

SELECT 'BlankName', uid FROM person WHERE firstName IS NULL AND lastName IS NULL;
