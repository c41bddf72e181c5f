-- Loads what scripts/demo collected on this machine (files packages.txt and files.txt in the current folder)
-- and defines the reports over it. Sizes are NUMBERs; so are the derived sizes in MiB, rounded to three
-- decimals row by row, as a bill would. Times of change are DATEs.

CREATE TABLE package(
    name    TEXT,
    version TEXT,
    section TEXT,
    size    NUMBER,  -- KiB
    mib     NUMBER AS (dv_round(dv_div(size, 1024), 3)) STORED
);
CREATE TABLE file(
    folder  TEXT,
    path    TEXT,
    size    NUMBER,  -- bytes
    changed DATE,
    mib     NUMBER AS (dv_round(dv_div(size, 1048576), 3)) STORED
);

CREATE TEMP TABLE package_text(name, version, section, size);
CREATE TEMP TABLE file_text(folder, path, size, changed);
.import --ascii packages.txt package_text
.import --ascii files.txt file_text

INSERT INTO package(name, version, section, size)
    SELECT name, version, section, to_number(size) FROM package_text;
INSERT INTO file(folder, path, size, changed)
    SELECT folder, path, to_number(size), to_date(changed, 'YYYY-MM-DD HH24:MI:SS') FROM file_text;

CREATE INDEX package_by_section_and_size ON package(section, size);
CREATE INDEX file_by_folder_and_size ON file(folder, size);
CREATE INDEX file_by_size ON file(size);
ANALYZE;

-- One row per group. max() compares the stored bytes, which is comparing the numbers.
CREATE VIEW section AS
    SELECT section AS name, count(*) AS members, dv_sum(size) AS total, dv_sum(mib) AS mib,
           dv_avg(size) AS average, max(size) AS largest
    FROM package GROUP BY section;
CREATE VIEW folder AS
    SELECT folder AS name, count(*) AS members, dv_sum(size) AS total, dv_sum(mib) AS mib,
           dv_avg(size) AS average, max(size) AS largest
    FROM file GROUP BY folder;
CREATE VIEW month AS
    SELECT dv_trunc(changed, 'MM') AS month, count(*) AS members, min(changed) AS first, max(changed) AS last
    FROM file GROUP BY dv_trunc(changed, 'MM');
