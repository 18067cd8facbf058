unit Greeting;
{ A small unit for the scanner demonstration }
interface

function Greet(const Name: string; Times: Integer): string;

implementation

const
  CRLF = #13#10;
  Hello = 'Hello, ';  // LOCALIZE ON

function Greet(const Name: string; Times: Integer): string;
var
  I: Integer;
begin
  Result := '';
  for I := 1 to Times do
    Result := Result + Hello + Name + '!' + CRLF;  (* one line each *)
  if Times > 9 then
    Result := Result + 'That''s a lot.';
end;

end.
