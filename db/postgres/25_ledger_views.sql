-- Reference schema: the screening views over the energy ledger (PostgreSQL).
--
-- The screening compares a customer's month with the months around it
-- (zero runs, last year's month, the average of the months before). Read
-- from the ledger, each customer-month costs correlated look-ups, and
-- PostgreSQL pays several microseconds for each; so the figures of every
-- customer and ledger month are kept beside the ledger in b_ydlhz, one row
-- each, and the screening reads one month of them with hash joins. SQLite
-- reads the ledger itself (db/sqlite/25_ledger_views.sql), with the same
-- columns and values.

-- Month figures per customer and ledger month (months with ledger rows only):
--   zdl    the month's total energy (jffdl + jfpdl + jfgdl, all billing
--          points),
--   lxldys the number of ledger months up to and including this one, back
--          to the last month in which a ledger row had energy, all without
--          energy; 0 when a row of this month has energy,
--   qnbd   abs((zdl - last year's zdl) / last year's zdl * 100), rounded to
--          2 places; NULL when last year's month has no rows or is zero,
--   pjdl   pjdl[n] (n = 1..12) the average total over those of the n
--          calendar months before this one that have ledger rows; NULL when
--          none has, or when the month is not YYYYMM.
-- Kept by the triggers below; never written by the module.
CREATE TABLE b_ydlhz (
    hh      VARCHAR(10) NOT NULL,
    ny      VARCHAR(6) NOT NULL,
    zdl     NUMERIC NOT NULL,
    lxldys  NUMERIC NOT NULL,      -- numeric as the view shows it, so that its
                                   -- statistics serve the texts' conditions
    qnbd    NUMERIC,
    pjdl    NUMERIC[] NOT NULL,
    PRIMARY KEY (hh, ny)
);
-- A month of figures is read from this index alone (the screening reads
-- one month of a unit), not from heap pages spread over every customer.
CREATE INDEX b_ydlhz_ny ON b_ydlhz (ny, hh) INCLUDE (lxldys, qnbd, zdl, pjdl);

-- Recomputes the figures of the given customers from their ledger rows.
CREATE FUNCTION tarvin_ydlhz_refresh(ac_hh varchar[]) RETURNS void
LANGUAGE sql VOLATILE AS $$
    DELETE FROM b_ydlhz WHERE hh = ANY (ac_hh);
    INSERT INTO b_ydlhz (hh, ny, zdl, lxldys, qnbd, pjdl)
    WITH m AS (
        SELECT hh, ny,
               SUM(COALESCE(jffdl, 0) + COALESCE(jfpdl, 0) + COALESCE(jfgdl, 0)) AS zdl,
               bool_or(COALESCE(jffdl, 0) + COALESCE(jfpdl, 0) + COALESCE(jfgdl, 0) <> 0) AS ydl,
               -- the month as a number, for the calendar months before it
               CASE WHEN ny ~ '^[0-9]{4}(0[1-9]|1[0-2])$'
                    THEN CAST(SUBSTR(ny, 1, 4) AS INTEGER) * 12 + CAST(SUBSTR(ny, 5, 2) AS INTEGER) END AS yh,
               CASE WHEN SUBSTR(ny, 1, 4) ~ '^[0-9]+$'
                    THEN (CAST(SUBSTR(ny, 1, 4) AS INTEGER) - 1) || SUBSTR(ny, 5, 2) END AS qnny
          FROM b_dltzxx
         WHERE hh = ANY (ac_hh)
         GROUP BY hh, ny
    ), x AS (
        SELECT m.*, row_number() OVER (PARTITION BY hh ORDER BY ny) AS xh
          FROM m
    )
    SELECT x.hh, x.ny, x.zdl,
           x.xh - COALESCE(MAX(CASE WHEN x.ydl THEN x.xh END) OVER (PARTITION BY x.hh ORDER BY x.ny), 0),
           ROUND(ABS((x.zdl - q.zdl) * 100.0 / NULLIF(q.zdl, 0)), 2),
           CASE WHEN x.yh IS NULL THEN ARRAY[NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL]::numeric[]
                ELSE ARRAY[AVG(x.zdl) OVER (PARTITION BY x.hh ORDER BY x.yh RANGE BETWEEN 1 PRECEDING AND 1 PRECEDING),
                           AVG(x.zdl) OVER (PARTITION BY x.hh ORDER BY x.yh RANGE BETWEEN 2 PRECEDING AND 1 PRECEDING),
                           AVG(x.zdl) OVER (PARTITION BY x.hh ORDER BY x.yh RANGE BETWEEN 3 PRECEDING AND 1 PRECEDING),
                           AVG(x.zdl) OVER (PARTITION BY x.hh ORDER BY x.yh RANGE BETWEEN 4 PRECEDING AND 1 PRECEDING),
                           AVG(x.zdl) OVER (PARTITION BY x.hh ORDER BY x.yh RANGE BETWEEN 5 PRECEDING AND 1 PRECEDING),
                           AVG(x.zdl) OVER (PARTITION BY x.hh ORDER BY x.yh RANGE BETWEEN 6 PRECEDING AND 1 PRECEDING),
                           AVG(x.zdl) OVER (PARTITION BY x.hh ORDER BY x.yh RANGE BETWEEN 7 PRECEDING AND 1 PRECEDING),
                           AVG(x.zdl) OVER (PARTITION BY x.hh ORDER BY x.yh RANGE BETWEEN 8 PRECEDING AND 1 PRECEDING),
                           AVG(x.zdl) OVER (PARTITION BY x.hh ORDER BY x.yh RANGE BETWEEN 9 PRECEDING AND 1 PRECEDING),
                           AVG(x.zdl) OVER (PARTITION BY x.hh ORDER BY x.yh RANGE BETWEEN 10 PRECEDING AND 1 PRECEDING),
                           AVG(x.zdl) OVER (PARTITION BY x.hh ORDER BY x.yh RANGE BETWEEN 11 PRECEDING AND 1 PRECEDING),
                           AVG(x.zdl) OVER (PARTITION BY x.hh ORDER BY x.yh RANGE BETWEEN 12 PRECEDING AND 1 PRECEDING)]
           END
      FROM x
      LEFT JOIN m q ON q.hh = x.hh AND q.ny = x.qnny;
$$;

-- The figures follow every change of the ledger: the customers a statement
-- touched are recomputed once, after the statement.
CREATE FUNCTION tarvin_ydlhz_follow() RETURNS trigger
LANGUAGE plpgsql VOLATILE AS $$
BEGIN
    IF TG_OP = 'INSERT' THEN
        PERFORM tarvin_ydlhz_refresh(ARRAY(SELECT DISTINCT hh FROM xz));
    ELSIF TG_OP = 'UPDATE' THEN
        PERFORM tarvin_ydlhz_refresh(ARRAY(SELECT hh FROM jz UNION SELECT hh FROM xz));
    ELSIF TG_OP = 'DELETE' THEN
        PERFORM tarvin_ydlhz_refresh(ARRAY(SELECT DISTINCT hh FROM jz));
    ELSE
        TRUNCATE b_ydlhz;
    END IF;
    RETURN NULL;
END
$$;

CREATE TRIGGER b_dltzxx_ydlhz_i AFTER INSERT ON b_dltzxx
    REFERENCING NEW TABLE AS xz FOR EACH STATEMENT EXECUTE FUNCTION tarvin_ydlhz_follow();
CREATE TRIGGER b_dltzxx_ydlhz_u AFTER UPDATE ON b_dltzxx
    REFERENCING OLD TABLE AS jz NEW TABLE AS xz FOR EACH STATEMENT EXECUTE FUNCTION tarvin_ydlhz_follow();
CREATE TRIGGER b_dltzxx_ydlhz_d AFTER DELETE ON b_dltzxx
    REFERENCING OLD TABLE AS jz FOR EACH STATEMENT EXECUTE FUNCTION tarvin_ydlhz_follow();
CREATE TRIGGER b_dltzxx_ydlhz_t AFTER TRUNCATE ON b_dltzxx
    FOR EACH STATEMENT EXECUTE FUNCTION tarvin_ydlhz_follow();

-- Consecutive zero readings: per customer and ledger month, lxldys is the
-- number of ledger months up to and including this one, back to the last
-- month with energy, in which the customer's total energy (peak + flat +
-- valley, all billing points) was zero; 0 for a month with energy.
CREATE VIEW v_lxld AS
SELECT a.*,
       f.ny AS ny,
       f.lxldys AS lxldys
  FROM v_yckhda a
  JOIN b_ydlhz f ON f.hh = a.hh;

-- Swing against the same month of the previous year: bdl is
-- abs((this year - last year) / last year * 100), rounded to 2 places, over
-- the customer's total energy of the two months; NULL when last year's
-- month is missing or zero. One row per customer and month, as v_lxld.
CREATE VIEW v_qntqdlbd AS
SELECT a.*,
       f.ny AS ny,
       f.qnbd AS bdl
  FROM v_yckhda a
  JOIN b_ydlhz f ON f.hh = a.hh;
