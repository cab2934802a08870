-- Reference schema: stored routines (PostgreSQL).
--
-- Every routine is a function, so that it can be called in a SELECT
-- ("select get_cdbh()"). The SQLite connection registers C++ functions of
-- the same names and results (src/data/SqliteRoutines.cpp).

-- ---------------------------------------------------------------------------
-- The database clock. A session may fix it (tests, demonstrations) with
-- set_config('tarvin.clock', 'YYYY-MM-DD HH24:MI:SS', false); an empty
-- setting returns to the server's local time.
-- Plain SQL, so that the planner writes it into the calling query: a
-- screening condition calls it once per customer.
CREATE FUNCTION tarvin_sysdate() RETURNS timestamp(0)
LANGUAGE sql STABLE AS $$
    SELECT COALESCE(CAST(NULLIF(current_setting('tarvin.clock', true), '') AS timestamp(0)), localtimestamp(0))
$$;

-- A date-time moved by a number of days (fractions are parts of a day).
CREATE FUNCTION tarvin_date_add(at timestamp, days numeric) RETURNS timestamp(0)
LANGUAGE sql IMMUTABLE AS $$
    SELECT (at + days * interval '1 day')::timestamp(0)
$$;

-- ---------------------------------------------------------------------------
-- Numbering: document, supply-scheme, meter-id and batch numbers. Each is a
-- 10-character zero-padded number from its own sequence, unique across
-- sessions and never reused (a rolled-back transaction loses its number);
-- '-1' once the sequence has passed 9999999999.

CREATE SEQUENCE seq_cdbh   MINVALUE 1 MAXVALUE 9999999999 NO CYCLE;
CREATE SEQUENCE seq_gdfabh MINVALUE 1 MAXVALUE 9999999999 NO CYCLE;
CREATE SEQUENCE seq_dnbid  MINVALUE 1 MAXVALUE 9999999999 NO CYCLE;
CREATE SEQUENCE seq_jcph   MINVALUE 1 MAXVALUE 9999999999 NO CYCLE;

CREATE FUNCTION tarvin_next_number(seq regclass) RETURNS varchar
LANGUAGE plpgsql VOLATILE AS $$
BEGIN
    RETURN lpad(nextval(seq)::text, 10, '0');
EXCEPTION WHEN sequence_generator_limit_exceeded THEN
    RETURN '-1';
END
$$;

CREATE FUNCTION get_cdbh() RETURNS varchar
LANGUAGE sql VOLATILE AS $$ SELECT tarvin_next_number('seq_cdbh') $$;

CREATE FUNCTION get_gdfabh() RETURNS varchar
LANGUAGE sql VOLATILE AS $$ SELECT tarvin_next_number('seq_gdfabh') $$;

CREATE FUNCTION get_dnbid() RETURNS varchar
LANGUAGE sql VOLATILE AS $$ SELECT tarvin_next_number('seq_dnbid') $$;

CREATE FUNCTION get_jcph() RETURNS varchar
LANGUAGE sql VOLATILE AS $$ SELECT tarvin_next_number('seq_jcph') $$;

-- ---------------------------------------------------------------------------
-- Withdraws what a business wrote under a document whose workflow start
-- failed: the application, its control row, the metering and supply
-- schemes, and the document's workflow position, steps and messages.
CREATE FUNCTION yk_undoyysq(ac_cdbh varchar) RETURNS void
LANGUAGE plpgsql VOLATILE AS $$
BEGIN
    DELETE FROM a_khsqxx WHERE cdbh = ac_cdbh;
    DELETE FROM a_ykkzb  WHERE cdbh = ac_cdbh;
    DELETE FROM a_dnbfa  WHERE cdbh = ac_cdbh;
    DELETE FROM a_hgqfa  WHERE cdbh = ac_cdbh;
    DELETE FROM a_gdfa   WHERE cdbh = ac_cdbh;
    DELETE FROM z_dqgw   WHERE cdbh = ac_cdbh;
    DELETE FROM z_lcls   WHERE cdbh = ac_cdbh;
    DELETE FROM z_gzdxx  WHERE cdbh = ac_cdbh;
END
$$;

-- ---------------------------------------------------------------------------
-- Energy swing of a customer's month against the average of the months
-- before it, in percent, rounded to 2 places:
--   cur = the month's total energy (jffdl + jfpdl + jfgdl of b_dltzxx),
--   avg = the average monthly total over those of the ai_n calendar months
--         before ac_ny that have ledger rows,
--   result = abs((cur - avg) / avg * 100); with ac_flag '0' the sign is
--         kept (positive = a rise).
-- NULL when the month has no ledger rows, when none of the months before it
-- has, when avg is 0, when ai_n < 1 or when ac_ny is not YYYYMM: a NULL
-- never passes a threshold.
CREATE FUNCTION jc_pjdlbd(ac_hh varchar, ac_ny varchar, ai_n numeric, ac_flag varchar)
RETURNS numeric
LANGUAGE plpgsql STABLE AS $$
DECLARE
    v_months integer;
    v_first varchar;
    v_last varchar;
    v_cur numeric;
    v_avg numeric;
    v_swing numeric;
BEGIN
    IF ac_hh IS NULL OR ac_ny IS NULL OR ai_n IS NULL OR ac_ny !~ '^[0-9]{4}(0[1-9]|1[0-2])$' THEN
        RETURN NULL;
    END IF;
    v_months := trunc(ai_n);
    IF v_months < 1 THEN
        RETURN NULL;
    END IF;
    SELECT SUM(COALESCE(jffdl, 0) + COALESCE(jfpdl, 0) + COALESCE(jfgdl, 0)) INTO v_cur
      FROM b_dltzxx
     WHERE hh = ac_hh AND ny = ac_ny;
    IF v_cur IS NULL THEN
        RETURN NULL;
    END IF;
    v_first := to_char(to_date(ac_ny, 'YYYYMM') - make_interval(months => v_months), 'YYYYMM');
    v_last := to_char(to_date(ac_ny, 'YYYYMM') - interval '1 month', 'YYYYMM');
    SELECT AVG(t.zdl) INTO v_avg
      FROM (SELECT SUM(COALESCE(jffdl, 0) + COALESCE(jfpdl, 0) + COALESCE(jfgdl, 0)) AS zdl
              FROM b_dltzxx
             WHERE hh = ac_hh AND ny >= v_first AND ny <= v_last
             GROUP BY ny) t;
    IF v_avg IS NULL OR v_avg = 0 THEN
        RETURN NULL;
    END IF;
    v_swing := (v_cur - v_avg) / v_avg * 100;
    IF ac_flag IS DISTINCT FROM '0' THEN
        v_swing := abs(v_swing);
    END IF;
    RETURN round(v_swing, 2);
END
$$;

-- jc_pjdlbd from a customer-month's figures (b_ydlhz: ai_zdl its total,
-- ai_pjdl the averages of the months before), as the dialect bridge writes a
-- call of jc_pjdlbd in a select list: the figures come by a join, so the
-- screening of a whole unit needs no look-up per customer. The same result
-- as jc_pjdlbd(ac_hh, ac_ny, ai_n, ac_flag), which it calls when ai_n is
-- not 1..12. Inlined by the planner (a plain SQL expression).
CREATE FUNCTION tarvin_pjdlbd(ai_zdl numeric, ai_pjdl numeric[], ac_hh varchar, ac_ny varchar, ai_n numeric, ac_flag varchar)
RETURNS numeric
LANGUAGE sql STABLE AS $$
    SELECT CASE WHEN trunc(ai_n) BETWEEN 1 AND 12
                THEN round(CASE WHEN ac_flag IS DISTINCT FROM '0'
                                THEN abs((ai_zdl - ai_pjdl[CAST(trunc(ai_n) AS integer)])
                                         / NULLIF(ai_pjdl[CAST(trunc(ai_n) AS integer)], 0) * 100)
                                ELSE (ai_zdl - ai_pjdl[CAST(trunc(ai_n) AS integer)])
                                     / NULLIF(ai_pjdl[CAST(trunc(ai_n) AS integer)], 0) * 100
                           END, 2)
                ELSE jc_pjdlbd(ac_hh, ac_ny, ai_n, ac_flag)
           END
$$;

-- ---------------------------------------------------------------------------
-- Records the refund/supplement of a metering anomaly case on its work
-- sheet (e_jlycgzd). The amounts are the totals of the b_tbdfxx rows of the
-- refund records whose glcdbh is the case:
--   zbzdl  = fdl + gdl + pdl,
--   zbdldf = fdf + gdf + pdf + dsk6 + dsk7,
--   zbjbdf = rldf + xldf,
--   zblldf = lldf,
--   yzbdf  = zbdldf + zbjbdf + zblldf + wysydf (the penalty already on the
--            sheet).
-- ai_dm 0 clears them instead (the case has no refund or supplement).
-- A case without a work sheet is left alone.
CREATE FUNCTION jc_jlyctbjl(ac_cdbh varchar, ai_dm numeric) RETURNS void
LANGUAGE plpgsql VOLATILE AS $$
DECLARE
    v_dl numeric := 0;
    v_dldf numeric := 0;
    v_jbdf numeric := 0;
    v_lldf numeric := 0;
BEGIN
    IF ai_dm IS DISTINCT FROM 0 THEN
        SELECT COALESCE(SUM(COALESCE(d.fdl, 0) + COALESCE(d.gdl, 0) + COALESCE(d.pdl, 0)), 0),
               COALESCE(SUM(COALESCE(d.fdf, 0) + COALESCE(d.gdf, 0) + COALESCE(d.pdf, 0)
                            + COALESCE(d.dsk6, 0) + COALESCE(d.dsk7, 0)), 0),
               COALESCE(SUM(COALESCE(d.rldf, 0) + COALESCE(d.xldf, 0)), 0),
               COALESCE(SUM(COALESCE(d.lldf, 0)), 0)
          INTO v_dl, v_dldf, v_jbdf, v_lldf
          FROM b_tbdfxx d
         WHERE d.tbcdh IN (SELECT j.tbcdh FROM b_tbjl j WHERE j.glcdbh = ac_cdbh);
    END IF;
    UPDATE e_jlycgzd
       SET zbzdl = v_dl,
           zbdldf = v_dldf,
           zbjbdf = v_jbdf,
           zblldf = v_lldf,
           yzbdf = v_dldf + v_jbdf + v_lldf + COALESCE(wysydf, 0)
     WHERE cdbh = ac_cdbh;
END
$$;
