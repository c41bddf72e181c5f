-- The tables of scripts/demo --postgres, and the reports over them: those of demo.sql in a server that has the types.

CREATE TABLE package (
    name    text,
    version text,
    section text,
    size    number,  -- KiB
    mib     number GENERATED ALWAYS AS (dv_round(size / 1024, 3)) STORED
);
CREATE TABLE file (
    folder  text,
    path    text,
    size    number,  -- bytes
    changed dv_date,
    mib     number GENERATED ALWAYS AS (dv_round(size / 1048576, 3)) STORED
);

CREATE INDEX package_by_section_and_size ON package (section, size);
CREATE INDEX file_by_folder_and_size ON file (folder, size);
CREATE INDEX file_by_size ON file (size);

CREATE VIEW section AS
    SELECT section AS name, count(*) AS members, sum(size) AS total, sum(mib) AS mib, avg(size) AS average,
           max(size) AS largest
    FROM package GROUP BY section;
CREATE VIEW folder AS
    SELECT folder AS name, count(*) AS members, sum(size) AS total, sum(mib) AS mib, avg(size) AS average,
           max(size) AS largest
    FROM file GROUP BY folder;
CREATE VIEW month AS
    SELECT dv_trunc(changed, 'MM') AS month, count(*) AS members, min(changed) AS first, max(changed) AS last
    FROM file GROUP BY dv_trunc(changed, 'MM');
