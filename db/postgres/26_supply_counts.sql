-- Reference schema: the count of supply sources per customer (PostgreSQL).
--
-- A screening rule counts each customer's supply sources with a correlated
-- subquery, (SELECT COUNT(1) FROM Y_GDDY WHERE HH=A.HH)>'1'. PostgreSQL
-- runs it once per customer of the unit and cannot estimate it, so the
-- count is kept here, and the bridge turns such a condition into
-- A.HH IN (SELECT hh FROM y_gddyhz WHERE dys>'1') (src/data/SqlRewrite.cpp):
-- the planner sees a plain column with statistics and starts from the few
-- customers with several sources. SQLite answers the subquery from y_gddy's
-- key directly.

-- Customers with at least one supply source; none has dys 0.
-- Kept by the triggers below; never written by the module.
CREATE TABLE y_gddyhz (
    hh      VARCHAR(10) PRIMARY KEY,
    dys     BIGINT NOT NULL            -- COUNT's own type
);
CREATE INDEX y_gddyhz_dys ON y_gddyhz (dys);

-- Adds what a statement changed, per customer: a row counted in or out
-- changes the count by one. Row locks order concurrent writers, so the
-- counts stay right when two transactions change one customer's sources.
CREATE FUNCTION tarvin_gddyhz_add(ac_hh varchar[], ai_d bigint[]) RETURNS void
LANGUAGE sql VOLATILE AS $$
    INSERT INTO y_gddyhz AS t (hh, dys)
    SELECT hh, SUM(d) FROM unnest(ac_hh, ai_d) AS c(hh, d) GROUP BY hh HAVING SUM(d) <> 0
        ON CONFLICT (hh) DO UPDATE SET dys = t.dys + excluded.dys;
    -- by the index on dys, not by a search of a long array for every row
    DELETE FROM y_gddyhz WHERE dys = 0;
$$;

CREATE FUNCTION tarvin_gddyhz_follow() RETURNS trigger
LANGUAGE plpgsql VOLATILE AS $$
BEGIN
    IF TG_OP = 'INSERT' THEN
        PERFORM tarvin_gddyhz_add(array_agg(hh), array_agg(1::bigint)) FROM xz;
    ELSIF TG_OP = 'UPDATE' THEN
        PERFORM tarvin_gddyhz_add(array_agg(hh), array_agg(d))
           FROM (SELECT hh, -1::bigint AS d FROM jz UNION ALL SELECT hh, 1 FROM xz) u;
    ELSIF TG_OP = 'DELETE' THEN
        PERFORM tarvin_gddyhz_add(array_agg(hh), array_agg(-1::bigint)) FROM jz;
    ELSE
        TRUNCATE y_gddyhz;
    END IF;
    RETURN NULL;
END
$$;

CREATE TRIGGER y_gddy_gddyhz_i AFTER INSERT ON y_gddy
    REFERENCING NEW TABLE AS xz FOR EACH STATEMENT EXECUTE FUNCTION tarvin_gddyhz_follow();
CREATE TRIGGER y_gddy_gddyhz_u AFTER UPDATE ON y_gddy
    REFERENCING OLD TABLE AS jz NEW TABLE AS xz FOR EACH STATEMENT EXECUTE FUNCTION tarvin_gddyhz_follow();
CREATE TRIGGER y_gddy_gddyhz_d AFTER DELETE ON y_gddy
    REFERENCING OLD TABLE AS jz FOR EACH STATEMENT EXECUTE FUNCTION tarvin_gddyhz_follow();
CREATE TRIGGER y_gddy_gddyhz_t AFTER TRUNCATE ON y_gddy
    FOR EACH STATEMENT EXECUTE FUNCTION tarvin_gddyhz_follow();

-- A database that already has supply sources starts with their counts.
INSERT INTO y_gddyhz (hh, dys) SELECT hh, COUNT(*) FROM y_gddy WHERE hh IS NOT NULL GROUP BY hh;
