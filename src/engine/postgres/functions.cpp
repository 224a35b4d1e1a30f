#include "engine/postgres/functions.h"

#include <string>

namespace jxc::postgres {
namespace functions_detail {

// Whatever may refuse a value is `stable`: an `immutable` function with constant arguments would be tried while the
// statement is planned, also in the branch of a choice that is never taken.
constexpr std::string_view numbersAndTexts = R"(
create schema if not exists jxc;

-- The last command that each connection of a workstation has kept. In a schema of its own: that of a user called jxc is
-- where his account set lives.
create schema if not exists jxc_stations;
create table if not exists jxc_stations.commands(station text primary key, command bigint not null,
                                                 told timestamptz not null default now());

create or replace function jxc.too_wide(place text) returns text language plpgsql stable as $$
begin
  raise exception using errcode = 'JX001', message = place;
end $$;

create or replace function jxc.fit(t text, width int, place text) returns text language plpgsql stable as $$
begin
  if char_length(t) > width then return jxc.too_wide(place); end if;
  return t;
end $$;

create or replace function jxc.is_number(t text) returns boolean language sql immutable parallel safe cost 10 as $$
  select coalesce(t ~ '^ *[+-]?([0-9]+[.]?[0-9]*|[.][0-9]+)([eE][+-]?[0-9]+)? *$', false)
$$;

-- Blank text counts as zero, as an empty field does everywhere.
create or replace function jxc.num(t text) returns numeric language plpgsql stable cost 200 as $$
begin
  if t is null then return null; end if;
  if jxc.is_number(t) then return btrim(t)::numeric; end if;
  if btrim(t) = '' then return 0; end if;
  raise exception using errcode = 'JX002', message = t;
end $$;

create or replace function jxc.num(n numeric) returns numeric language sql immutable parallel safe as $$ select n $$;

create or replace function jxc.trynum(t text) returns numeric language sql immutable parallel safe as $$
  select case when jxc.is_number(t) then round(btrim(t)::numeric, 6) end
$$;

-- General format with 15 significant digits.
create or replace function jxc.text(n numeric) returns text language plpgsql immutable parallel safe as $$
declare
  size numeric := abs(n);
  places int;
  rounded numeric;
begin
  if n is null then return null; end if;
  if n = 0 then return '0'; end if;
  if size < 1000000000 and scale(n) <= 6 then return trim_scale(n)::text; end if;
  places := case when size >= 1 then char_length(trunc(size)::text) - 1
                 else -1 - char_length(substring(size::text from '^0[.](0*)')) end;
  rounded := round(n, 14 - places);
  if abs(rounded) >= power(10::numeric, places + 1) then places := places + 1; end if;
  if places >= 15 or places < -6 then
    rounded := case when places >= 0 then round(rounded / power(10::numeric, places), 14)
                    else round(rounded * power(10::numeric, -places), 14) end;
    return trim_scale(rounded)::text || case when places < 0 then 'e-' else 'e+' end || lpad(abs(places)::text, 2, '0');
  end if;
  return trim_scale(rounded)::text;
end $$;

-- Half away from zero. A large number is rounded as the double that the program has of it: what is added to it in the
-- ninth place is lost there, and both must come to the same.
create or replace function jxc.round_double(x float8, digits int) returns numeric
language plpgsql immutable parallel safe as $$
declare
  power10 float8 := power(10::float8, digits);
  scaled float8 := abs(x * power10);
begin
  if scaled >= 9007199254740992 then return x::numeric; end if;
  scaled := scaled + least(scaled * 2.220446049250313e-16::float8, 0.25::float8);
  return sign(x)::numeric * floor(scaled + 0.5)::bigint * power(10::numeric, -digits);
end $$;

create or replace function jxc.round(n numeric, digits int) returns numeric language sql immutable parallel safe as $$
  select case when abs(n) < 1000000 then round(n, digits)
              else round(jxc.round_double(n::float8, digits), greatest(digits, 0)) end
$$;

create or replace function jxc.str(n numeric) returns text language sql immutable parallel safe as $$
  select case when n < 0 then '' else ' ' end || jxc.text(n)
$$;

-- The number that a text begins with, 0 when it begins with none.
create or replace function jxc.val(t text) returns numeric language sql immutable parallel safe as $$
  select case when t is null then null else
    coalesce(substring(t from '^ *([+-]?(?:[0-9]+[.]?[0-9]*|[.][0-9]+)(?:[eE][+-]?[0-9]+)?)')::numeric, 0) end
$$;

create or replace function jxc.bit(n numeric) returns smallint language sql immutable parallel safe as $$
  select coalesce((round(n, 6) <> 0)::int, 0)::smallint
$$;

create or replace function jxc.bit(t text) returns smallint language plpgsql stable as $$
begin
  if t is null or lower(t) = 'false' then return 0; end if;
  if lower(t) = 'true' then return 1; end if;
  return jxc.bit(jxc.num(t));
end $$;

-- Whole numbers on both sides, rounded first.
create or replace function jxc.idiv(a numeric, b numeric) returns bigint language sql immutable parallel safe as $$
  select div(round(round(a, 6)), round(round(b, 6)))::bigint
$$;

create or replace function jxc.mod(a numeric, b numeric) returns bigint language sql immutable parallel safe as $$
  select mod(round(round(a, 6)), round(round(b, 6)))::bigint
$$;

-- Two values that nothing gives a type: numbers add, texts join.
create or replace function jxc.plus(a text, b text) returns text language sql immutable parallel safe as $$
  select case when jxc.is_number(a) and jxc.is_number(b) then jxc.text(btrim(a)::numeric + btrim(b)::numeric)
              else a || b end
$$;

-- Where part begins, counted from 1, looking from the start; 0 when nowhere.
create or replace function jxc.instr(start int, t text, part text) returns int language sql immutable parallel safe as $$
  select case when start is null or t is null or part is null then null
              when start < 1 or strpos(substr(t, start), part) = 0 then 0
              else strpos(substr(t, start), part) + start - 1 end
$$;

-- A row brought its own number: those behind it go on from there.
create or replace function jxc.count_from(tab text, col text, n bigint) returns bigint language plpgsql volatile as $$
declare
  counter text := pg_get_serial_sequence(quote_ident(tab), col);
  last bigint;
begin
  if n is null then return null; end if;
  execute 'select last_value from ' || counter into last;
  if n >= last then perform setval(counter, n); end if;
  return n;
end $$;
)";

constexpr std::string_view dates = R"(
-- Null for what is no date: old rows hold all kinds of text in their date columns.
create or replace function jxc.moment(t text) returns timestamp language plpgsql immutable parallel safe as $$
declare
  p text[] := regexp_match(t,
    '^([0-9]{1,4})[-/.]([0-9]{1,4})[-/.]([0-9]{1,4})(?:[ T]([0-9]{1,4}):([0-9]{1,4})(?::([0-9]{1,4}))?)? *$');
begin
  if p is null or p[1]::int < 1 or p[2]::int not between 1 and 12 or p[3]::int < 1 then return null; end if;
  if p[3]::int > extract(day from make_date(p[1]::int, p[2]::int, 1) + interval '1 month' - interval '1 day') then
    return null;
  end if;
  if coalesce(p[4]::int, 0) > 23 or coalesce(p[5]::int, 0) > 59 or coalesce(p[6]::int, 0) > 59 then return null; end if;
  return make_timestamp(p[1]::int, p[2]::int, p[3]::int, coalesce(p[4]::int, 0), coalesce(p[5]::int, 0),
                        coalesce(p[6]::int, 0));
end $$;

-- How many borders of the unit lie between: from 31 January to 1 February is one month.
create or replace function jxc.datediff(unit text, a text, b text) returns bigint
language plpgsql immutable parallel safe as $$
declare
  m timestamp := jxc.moment(a);
  n timestamp := jxc.moment(b);
  years int := extract(year from n)::int - extract(year from m)::int;
begin
  if m is null or n is null then return null; end if;
  case lower(unit)
    when 'd', 'y' then return n::date - m::date;
    when 'm' then return years * 12 + extract(month from n)::int - extract(month from m)::int;
    when 'yyyy' then return years;
    when 'q' then return years * 4 + extract(quarter from n)::int - extract(quarter from m)::int;
    when 'w' then return (n::date - m::date) / 7;
    when 'ww' then return floor((n::date - date '2000-01-02') / 7.0) - floor((m::date - date '2000-01-02') / 7.0);
    when 's' then return extract(epoch from n) - extract(epoch from m);
    when 'n' then return floor(extract(epoch from n) / 60) - floor(extract(epoch from m) / 60);
    when 'h' then return floor(extract(epoch from n) / 3600) - floor(extract(epoch from m) / 3600);
    else return null;
  end case;
end $$;

create or replace function jxc.dateadd(unit text, n numeric, t text) returns text
language plpgsql immutable parallel safe as $$
declare
  m timestamp := jxc.moment(t);
  timed boolean := t ~ ':';
  c int;
begin
  if m is null or n is null or abs(n) >= 1000000000 then return null; end if;
  c := round(n)::int;
  m := case lower(unit)
    when 'yyyy' then m + make_interval(years => c)
    when 'q' then m + make_interval(months => c * 3)
    when 'm' then m + make_interval(months => c)
    when 'd' then m + make_interval(days => c)
    when 'y' then m + make_interval(days => c)
    when 'w' then m + make_interval(days => c)
    when 'ww' then m + make_interval(weeks => c)
    when 'h' then m + make_interval(secs => c * 3600.0)
    when 'n' then m + make_interval(secs => c * 60.0)
    when 's' then m + make_interval(secs => c)
  end;
  if m is null or m < timestamp '0001-01-01' or m >= timestamp '10000-01-01' then return null; end if;
  if lower(unit) in ('h', 'n', 's') and c <> 0 then timed := true; end if;
  return to_char(m, case when timed then 'YYYY-MM-DD HH24:MI:SS' else 'YYYY-MM-DD' end);
exception when datetime_field_overflow or interval_field_overflow then
  return null;
end $$;

create or replace function jxc.datepart(unit text, t text) returns bigint
language plpgsql immutable parallel safe as $$
declare
  m timestamp := jxc.moment(t);
begin
  if m is null then return null; end if;
  case lower(unit)
    when 'yyyy' then return extract(year from m);
    when 'm' then return extract(month from m);
    when 'd' then return extract(day from m);
    when 'q' then return extract(quarter from m);
    when 'w' then return extract(dow from m) + 1;
    when 'h' then return extract(hour from m);
    when 'n' then return extract(minute from m);
    when 's' then return extract(second from m);
    when 'y' then return extract(doy from m);
    when 'ww' then
      return div(extract(doy from m) - 1 + extract(dow from make_date(extract(year from m)::int, 1, 1)), 7) + 1;
    else return null;
  end case;
end $$;
)";

constexpr std::string_view formats = R"(
-- yyyy, yy, mm, m, dd, d, hh, h, nn, n, ss, s; mm behind an hour is minutes.
create or replace function jxc.format_moment(m timestamp, pattern text) returns text
language plpgsql immutable parallel safe as $$
declare
  part text;
  value int;
  hours boolean := false;
  result text := '';
begin
  for part in select r[1] from regexp_matches(pattern, '(y+|m+|d+|h+|n+|s+|[^ymdhns]+)', 'g') r loop
    value := case left(part, 1)
      when 'y' then extract(year from m)::int % case when char_length(part) > 2 then 10000 else 100 end
      when 'm' then case when hours then extract(minute from m) else extract(month from m) end
      when 'd' then extract(day from m)
      when 'h' then extract(hour from m)
      when 'n' then extract(minute from m)
      when 's' then extract(second from m)
    end;
    if value is null then
      result := result || part;
    else
      result := result || lpad(value::text, greatest(least(char_length(part), 4), char_length(value::text)), '0');
      hours := left(part, 1) = 'h';
    end if;
  end loop;
  return result;
end $$;

-- 0, #, one comma for thousands, a point.
create or replace function jxc.format_figure(n numeric, pattern text) returns text
language plpgsql immutable parallel safe as $$
declare
  point int := strpos(pattern, '.');
  head text := case when point > 0 then left(pattern, point - 1) else pattern end;
  tail text := case when point > 0 then substr(pattern, point + 1) else '' end;
  needed int := char_length(regexp_replace(tail, '[^0]', '', 'g'));
  allowed int := needed + char_length(regexp_replace(tail, '[^#]', '', 'g'));
  least_digits int := char_length(regexp_replace(head, '[^0]', '', 'g'));
  figure text := round(abs(round(n, 6)), allowed)::text;
  digits text := split_part(figure, '.', 1);
  fraction text := split_part(figure, '.', 2);
begin
  while char_length(fraction) > needed and right(fraction, 1) = '0' loop
    fraction := left(fraction, -1);
  end loop;
  if digits = '0' and least_digits = 0 then digits := ''; end if;
  digits := lpad(digits, greatest(least_digits, char_length(digits)), '0');
  if strpos(pattern, ',') > 0 then
    digits := reverse(regexp_replace(reverse(digits), '([0-9]{3})(?=[0-9])', '\1,', 'g'));
  end if;
  return case when n < 0 and digits || fraction ~ '[1-9]' then '-' else '' end || digits ||
         case when fraction = '' then '' else '.' || fraction end;
end $$;

create or replace function jxc.format(value text, pattern text) returns text
language plpgsql immutable parallel safe as $$
begin
  if value is null or pattern is null then return null; end if;
  if lower(pattern) ~ '[ymdhns]' then
    return case when jxc.moment(value) is null then value else jxc.format_moment(jxc.moment(value), lower(pattern)) end;
  end if;
  return case when jxc.is_number(value) then jxc.format_figure(btrim(value)::numeric, lower(pattern)) else value end;
end $$;

create or replace function jxc.version() returns int language sql immutable as $$ select 2 $$;
)";

std::string all() {
  return std::string(numbersAndTexts).append(dates).append(formats);
}

}  // namespace functions_detail

std::string_view functionDefinitions() {
  static const std::string text = functions_detail::all();
  return text;
}

}  // namespace jxc::postgres
