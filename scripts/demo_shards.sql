-- The reports of scripts/demo --shards: those of demo_postgres.sql in two levels. The inner query runs on the shards, which
-- send a state a group; the outer one merges them.

CREATE VIEW section AS
    SELECT name, sum(members)::bigint AS members, dv_sum_merge(size) AS total, dv_sum_merge(mib) AS mib,
           dv_avg_merge(size) AS average, max(largest) AS largest
    FROM (SELECT section AS name, count(*) AS members, dv_sum_state(size) AS size, dv_sum_state(mib) AS mib,
                 max(size) AS largest
          FROM package GROUP BY shard, section) AS shards
    GROUP BY name;
CREATE VIEW folder AS
    SELECT name, sum(members)::bigint AS members, dv_sum_merge(size) AS total, dv_sum_merge(mib) AS mib,
           dv_avg_merge(size) AS average, max(largest) AS largest
    FROM (SELECT folder AS name, count(*) AS members, dv_sum_state(size) AS size, dv_sum_state(mib) AS mib,
                 max(size) AS largest
          FROM file GROUP BY shard, folder) AS shards
    GROUP BY name;
CREATE VIEW month AS
    SELECT month, sum(members)::bigint AS members, min(first) AS first, max(last) AS last
    FROM (SELECT month, count(*) AS members, min(changed) AS first, max(changed) AS last
          FROM file GROUP BY shard, month) AS shards
    GROUP BY month;
